#pragma once

#include <cstddef>
#include <cstdint>

namespace Corvid {

// The name of an archived value: 1 to 47 printable ASCII characters without a blank, made by the compiler from a
// literal. Archives that have no labels ignore it.
class Label {
public:
    static constexpr std::size_t kMaxLength = 47;

    template <std::size_t Size>
    consteval Label(const char16_t (&text)[Size]) : m_Text(text), m_Length(static_cast<std::uint32_t>(Size - 1)) {
        if (m_Length == 0 || m_Length > kMaxLength)
            throw "a label has 1 to 47 characters";
        for (std::size_t i = 0; i < m_Length; ++i) {
            if (text[i] <= u' ' || text[i] > u'~')
                throw "a label is printable ASCII";
        }
    }

private:
    friend class LabelText;

    const char16_t* m_Text;
    std::uint32_t m_Length;
};

} // namespace Corvid
