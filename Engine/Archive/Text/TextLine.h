#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "Engine/Archive/Label.h"

namespace Corvid {

// The six white space characters of text archives.
constexpr bool IsWhiteSpace(char character) {
    return character == ' ' || (character >= '\t' && character <= '\r');
}

std::string_view SkipWhiteSpace(std::string_view text);

// One line of a text archive as the line buffer holds it.
struct TextLine {
    std::string_view m_Text;  // UTF-8 up to the line's first NUL; the line end, LF or CR LF, is included
    bool m_HasNul = false;    // there is one, and something may follow it
    char16_t m_FirstUnit = 0; // the second half of a character that the line buffer's end had split, or 0
    char16_t m_LastUnit = 0;  // the first half of a character that the line buffer's end splits, or 0
};

// The line from its label on; empty where it cannot have one.
std::string_view TextWithLabel(const TextLine& line);

// The text behind the label and the white space that must follow it; nothing when such a text has another label. Like
// every text of a line, it has InputStream::kPadding bytes behind it.
std::optional<std::string_view> ValueBehindLabel(std::string_view textWithLabel, Label label);

// The line for a message, the halves of a split character as they are printed; made in `storage` if need be.
std::string_view TextForReport(const TextLine& line, std::string& storage);

} // namespace Corvid
