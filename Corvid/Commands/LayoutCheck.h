#pragma once

#include <string>
#include <vector>

#include "Corvid/Commands/CommonOptions.h"

namespace Corvid {

struct LayoutCheckOptions {
    std::vector<std::string> m_Paths; // the layout, then the samples
    bool m_IsStrict = false;
    DiagnosticOptions m_Diagnostics;
    LookOptions m_Look;
};

// Reads a layout and converts samples by it, both ways.
void DeclareCommand(CommandDeclaration& declaration, LayoutCheckOptions& options);
int RunCommand(const LayoutCheckOptions& options, Console& console);

} // namespace Corvid
