#include "Engine/Archive/Text/QuotedString.h"

#include <algorithm>

#include "Engine/String/Unicode.h"

namespace Corvid {

namespace {

// The text behind its first unit; the second half of a surrogate pair stays.
TextLine BehindFirstUnit(std::string_view text) {
    TextLine behind;
    const char* position = text.data();
    const char* const end = position + text.size();
    if (position != end) {
        const char32_t first = DecodeUtf8(position, end);
        behind.m_FirstUnit = first >= 0x10000 ? LowSurrogate(first) : u'\0';
    }
    behind.m_Text = {position, static_cast<std::size_t>(end - position)};
    return behind;
}

std::string_view WithoutLineEnd(std::string_view text) {
    if (text.ends_with("\r\n"))
        text.remove_suffix(2);
    else if (text.ends_with('\n'))
        text.remove_suffix(1);
    return text;
}

// Takes units as long as there is room; always terminated.
class BoundedUnits {
public:
    BoundedUnits(char16_t* buffer, int capacity) : m_Buffer(buffer), m_Capacity(capacity) { m_Buffer[0] = 0; }

    void Append(char16_t unit) {
        m_IsTooSmall = m_IsTooSmall || m_Count + 1 >= m_Capacity;
        if (m_IsTooSmall)
            return;
        m_Buffer[m_Count++] = unit;
        m_Buffer[m_Count] = 0;
    }

    void AppendCharacter(char32_t character) {
        if (character >= 0x10000)
            Append(HighSurrogate(character));
        Append(character >= 0x10000 ? LowSurrogate(character) : static_cast<char16_t>(character));
    }

    bool IsTooSmall() const { return m_IsTooSmall; }

private:
    char16_t* m_Buffer;
    int m_Capacity;
    int m_Count = 0;
    bool m_IsTooSmall = false;
};

} // namespace

QuotedString::QuotedString(const TextLine& line, std::string_view value)
    : m_IsQuoted(value.starts_with('"')), m_BehindQuote(BehindFirstUnit(value)) {
    m_BehindQuote.m_LastUnit = line.m_LastUnit;
    const std::string_view text = WithoutLineEnd(m_BehindQuote.m_Text);
    m_Characters = text.substr(0, text.find('"'));
    m_IsTerminated = m_Characters.size() < text.size();
    m_IsAlone = !m_IsTerminated || std::all_of(text.begin() + static_cast<std::ptrdiff_t>(m_Characters.size()) + 1,
                                               text.end(), IsWhiteSpace);
}

bool QuotedString::CopyTo(char16_t* buffer, int capacity) const {
    BoundedUnits units(buffer, capacity);
    if (m_BehindQuote.m_FirstUnit != 0)
        units.Append(m_BehindQuote.m_FirstUnit);
    const char* position = m_Characters.data();
    const char* const end = position + m_Characters.size();
    while (position != end && !units.IsTooSmall())
        units.AppendCharacter(DecodeUtf8(position, end));
    if (!m_IsTerminated && m_BehindQuote.m_LastUnit != 0)
        units.Append(m_BehindQuote.m_LastUnit);
    return !units.IsTooSmall();
}

} // namespace Corvid
