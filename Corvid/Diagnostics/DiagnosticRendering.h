#pragma once

#include <string>
#include <string_view>

#include "Corvid/Diagnostics/DiagnosticLimits.h"

namespace Corvid {

enum class DiagnosticFormat { Text, Json, Github };

struct DiagnosticStyle {
    DiagnosticFormat m_Format = DiagnosticFormat::Text;
    bool m_HasColor = false; // of text
};

// Appends one line. `path` is the file's, in its own bytes; `printedPath` is fit for a line of text.
void AppendDiagnostic(std::string& out, std::string_view path, std::string_view printedPath,
                      const ShownDiagnostic& shown, const DiagnosticStyle& style);

// The last line of machine-readable output: how many files there were, and how many with errors and warnings.
std::string SummaryJson(std::uint64_t files, std::uint64_t errors, std::uint64_t warnings);

} // namespace Corvid
