#pragma once

#include "Corvid/Commands/CommonOptions.h"
#include "Corvid/Commands/LayoutOptions.h"

namespace Corvid {

struct ExportOptions {
    std::vector<std::string> m_Paths; // one
    std::string m_Output;
    std::optional<std::string> m_TextureFolder;
    std::optional<Kind> m_Kind;
    LayoutOptions m_Layouts;
    DiagnosticOptions m_Diagnostics;
    LookOptions m_Look;
};

// Writes a file in a form that other people's tools read.
void DeclareCommand(CommandDeclaration& declaration, ExportOptions& options);
int RunCommand(const ExportOptions& options, Console& console);

} // namespace Corvid
