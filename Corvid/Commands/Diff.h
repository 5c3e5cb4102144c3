#pragma once

#include <string>
#include <vector>

#include "Corvid/Commands/CommonOptions.h"
#include "Corvid/Commands/LayoutOptions.h"
#include "Corvid/Compare/CompareOptions.h"

namespace Corvid {

enum class DiffFormat { Text, Json };

struct DiffOptions {
    std::vector<std::string> m_Paths;
    std::optional<Kind> m_Kind;
    LayoutOptions m_Layouts;
    CompareOptions m_Compare;
    DiffFormat m_Format = DiffFormat::Text;
    int m_Jobs = DefaultJobs();
    std::uint64_t m_MostLines = DiagnosticLimits::kDefaultLines;
    LookOptions m_Look; // quiet: the status only
};

// Tells what differs between two files or two folders.
void DeclareCommand(CommandDeclaration& declaration, DiffOptions& options);
int RunCommand(const DiffOptions& options, Console& console);

} // namespace Corvid
