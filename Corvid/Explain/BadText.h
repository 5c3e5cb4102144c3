#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "Corvid/Diagnostics/DiagnosticLog.h"
#include "Corvid/Explain/TextLines.h"
#include "Engine/File/ByteSink.h"

namespace Corvid {

// Text that the engine takes in silence, but not as it stands: ill-formed UTF-8 becomes U+FFFD, a NUL ends the line, a
// line beyond the line buffer counts as several. Asks about a whole file at the speed of memory.
bool HasBadText(std::string_view text);

// The same of a text that comes in pieces.
class BadTextScan final : public ByteSink {
public:
    void WriteBlock(const char* bytes, std::size_t count) override;

    // Once all pieces were there.
    bool HasBadText() const { return m_HasBadText || Corvid::HasBadText(m_LineBegun); }

private:
    bool m_HasBadText = false;
    std::string m_LineBegun; // what followed the last line end so far
};

// Tells of each such line, at its first wrong character, and marks it as spoilt.
void ReportBadText(TextLines& lines, DiagnosticLog& log);

} // namespace Corvid
