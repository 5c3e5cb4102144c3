#include "Engine/Archive/Text/TextLineReader.h"

#include <algorithm>
#include <cstring>

#include "Engine/String/Unicode.h"

namespace Corvid {

namespace {

constexpr std::size_t kMaxLineBytes = 3 * TextLineReader::kMaxLineUnits + kMaxUtf8Bytes;

} // namespace

TextLine TextLineReader::Peek() {
    m_Input.Ensure(kMaxLineBytes);
    TextLine line;
    line.m_FirstUnit = m_FirstUnit;
    m_NextFirstUnit = 0;
    m_PieceEnd = FindPieceEnd(line);
    line.m_Text = {m_Input.GetPosition(), static_cast<std::size_t>(m_PieceEnd - m_Input.GetPosition())};
    if (line.m_LastUnit != 0)
        line.m_Text.remove_suffix(kMaxUtf8Bytes);
    if (const std::size_t nul = line.m_Text.find('\0'); nul != line.m_Text.npos) {
        line.m_Text = line.m_Text.substr(0, nul);
        line.m_HasNul = true;
        line.m_LastUnit = 0;
    }
    return line;
}

// Where the line, or as much of it as the line buffer takes, ends in the window.
const char* TextLineReader::FindPieceEnd(TextLine& line) {
    const char* position = m_Input.GetPosition();
    const char* const end = m_Input.GetEnd();
    int units = m_FirstUnit != 0 ? 1 : 0;

    // Bytes are at least as many as units: a line that ends within so many bytes needs no counting.
    const std::size_t safeBytes = std::min(m_Input.GetAvailable(), static_cast<std::size_t>(kMaxLineUnits - units));
    if (const void* lineEnd = std::memchr(position, '\n', safeBytes))
        return static_cast<const char*>(lineEnd) + 1;

    while (position != end && units < kMaxLineUnits) {
        if (*position == '\r' && position + 1 != end && position[1] == '\n')
            ++position;
        if (*position == '\n')
            return position + 1;
        const char32_t character = DecodeUtf8(position, end);
        units += character >= 0x10000 ? 2 : 1;
        if (units > kMaxLineUnits) {
            line.m_LastUnit = HighSurrogate(character);
            m_NextFirstUnit = LowSurrogate(character);
        }
    }
    return position;
}

void TextLineReader::Take() {
    if (m_PieceEnd != m_Input.GetPosition()) {
        m_IsInsideLine = m_PieceEnd[-1] != '\n';
        m_LinesTaken += m_IsInsideLine ? 0 : 1;
    }
    m_Input.SetPosition(m_PieceEnd);
    m_FirstUnit = m_NextFirstUnit;
}

} // namespace Corvid
