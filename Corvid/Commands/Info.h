#pragma once

#include "Corvid/Commands/CommonOptions.h"
#include "Corvid/Commands/LayoutOptions.h"

namespace Corvid {

struct InfoOptions {
    BatchOptions m_Batch;
    std::optional<Kind> m_Kind;
    LayoutOptions m_Layouts;
    bool m_IsJson = false;
    DiagnosticOptions m_Diagnostics;
    LookOptions m_Look;
};

// Tells what files are and what is in them.
void DeclareCommand(CommandDeclaration& declaration, InfoOptions& options);
int RunCommand(const InfoOptions& options, Console& console);

} // namespace Corvid
