#pragma once

#include <string_view>

#include "Corvid/Diagnostics/DiagnosticLog.h"
#include "Corvid/Explain/TextLines.h"

namespace Corvid {

// Text that the engine takes in silence, but not as it stands: ill-formed UTF-8 becomes U+FFFD, a NUL ends the line, a
// line beyond the line buffer counts as several. Asks about a whole file at the speed of memory.
bool HasBadText(std::string_view text);

// Tells of each such line, at its first wrong character, and marks it as spoilt.
void ReportBadText(TextLines& lines, DiagnosticLog& log);

} // namespace Corvid
