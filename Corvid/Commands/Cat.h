#pragma once

#include "Corvid/Commands/CommonOptions.h"
#include "Corvid/Commands/LayoutOptions.h"

namespace Corvid {

struct CatOptions {
    std::vector<std::string> m_Paths; // one
    std::optional<Kind> m_Kind;
    LayoutOptions m_Layouts;
    bool m_IsJson = false;
    bool m_IsLenient = false;
    DiagnosticOptions m_Diagnostics;
    LookOptions m_Look;
};

// Prints a file as text, whatever its encoding.
void DeclareCommand(CommandDeclaration& declaration, CatOptions& options);
int RunCommand(const CatOptions& options, Console& console);

} // namespace Corvid
