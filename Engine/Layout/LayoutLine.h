#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Corvid {

// Something wrong in the text of a layout.
struct LayoutError {
    int m_Line = 0;   // from 1
    int m_Column = 0; // from 1, in characters; a tab is one
    std::string m_Message;
};

// A word of a line: what stands between blanks, or between quotes.
struct LayoutToken {
    std::string m_Text; // UTF-8, without quotes and escapes
    bool m_IsQuoted = false;
    int m_Column = 0;

    bool Is(std::string_view word) const { return !m_IsQuoted && m_Text == word; }
};

// One line of a layout, taken apart.
struct LayoutLine {
    int m_Number = 0;
    int m_Depth = 0; // tabs in front
    std::vector<LayoutToken> m_Tokens;
    int m_EndColumn = 1; // behind the last token
};

// `text` is without its line end. What is wrong is added to `errors`; the line has no tokens then.
LayoutLine SplitLayoutLine(std::string_view text, int number, std::vector<LayoutError>& errors);

// How a label, a name or a word is written: as it stands where it can, else in quotes.
std::string QuotedLayoutWord(std::string_view text);
std::string LayoutWord(std::string_view text);

} // namespace Corvid
