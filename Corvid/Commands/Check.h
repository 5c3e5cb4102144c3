#pragma once

#include "Corvid/Commands/CommonOptions.h"
#include "Corvid/Commands/LayoutOptions.h"

namespace Corvid {

struct CheckOptions {
    BatchOptions m_Batch;
    std::optional<Kind> m_Kind;
    LayoutOptions m_Layouts;
    DiagnosticOptions m_Diagnostics;
    LookOptions m_Look;
    bool m_IsStrict = false;
    bool m_IsList = false;
    bool m_IsLossWanted = false;
    std::optional<std::string> m_ReferencesFolder; // what files name is looked for in it
};

// Loads files and reports what is wrong with them.
void DeclareCommand(CommandDeclaration& declaration, CheckOptions& options);
int RunCommand(const CheckOptions& options, Console& console);

} // namespace Corvid
