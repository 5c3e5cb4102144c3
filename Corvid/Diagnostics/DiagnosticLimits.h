#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "Corvid/Diagnostics/DiagnosticLog.h"

namespace Corvid {

// One line of what is shown about a file: a diagnostic, or how many like it are left out.
struct ShownDiagnostic {
    Diagnostic m_Diagnostic;  // where some are left out, without place and message
    std::uint64_t m_More = 0; // not 0: so many more of this code and field
    bool m_IsClosing = false; // the last line: m_More of all kinds are left out
};

struct DiagnosticLimits {
    static constexpr std::uint64_t kDefaultLines = 100;

    std::uint64_t m_MostLines = kDefaultLines; // of one file; 0: all of everything
    Severity m_Least = Severity::Note;         // what is less is not shown
};

// What is shown of a log: of one code at one field of different elements the first five, then how many more.
std::vector<ShownDiagnostic> SelectShown(const DiagnosticLog& log, const DiagnosticLimits& limits);

} // namespace Corvid
