#pragma once

#include <string_view>

#include "Engine/Archive/Text/TextLine.h"

namespace Corvid {

// The string in the text of a value: what stands between the quotes. There are no escapes.
struct QuotedString {
    // `line` is what `value`, the text of the value, is the end of.
    QuotedString(const TextLine& line, std::string_view value);

    // As far as `capacity` UTF-16 units, one at least, hold it, terminator included; false when that is not all.
    bool CopyTo(char16_t* buffer, int capacity) const;

    bool m_IsQuoted;     // begins with a quote; any other first unit is skipped like one
    bool m_IsTerminated; // by a second quote; else the string ends with the line
    bool m_IsAlone;      // only white space stands behind it

    // What stands behind the first unit. It begins with half a character where the first unit was the other half, and
    // ends with one where the line does.
    TextLine m_BehindQuote;

private:
    std::string_view m_Characters; // UTF-8, without the halves
};

} // namespace Corvid
