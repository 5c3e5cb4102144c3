#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>

namespace Corvid {

// The name of an archived value: 1 to 47 printable ASCII characters without a blank, made by the compiler from a
// literal. Archives that have no labels ignore it.
//
// Sixteen bytes, passed in registers: a label of up to 15 characters as such, its length in the last byte; a longer one
// as a pointer to its literal, with a last byte of zero. LabelText.h makes use of that.
class Label {
public:
    static constexpr std::size_t kMaxLength = 47;
    static constexpr std::size_t kMaxShortLength = 15;

    template <std::size_t Size> consteval Label(const char16_t (&text)[Size]) : m_Short{} {
        constexpr std::size_t kLength = Size - 1;
        static_assert(kLength >= 1 && kLength <= kMaxLength, "a label has 1 to 47 characters");
        for (std::size_t i = 0; i < kLength; ++i) {
            if (text[i] <= u' ' || text[i] > u'~')
                throw "a label is printable ASCII";
        }
        if constexpr (kLength <= kMaxShortLength) {
            for (std::size_t i = 0; i < kLength; ++i)
                m_Short.m_Words[i / 8] |= std::uint64_t{text[i]} << (8 * (i % 8));
            m_Short.m_Words[1] |= std::uint64_t{kLength} << 56;
        } else {
            m_Long = {text, std::uint32_t{kLength}, 0};
        }
    }

private:
    friend class LabelText;

    struct Short {
        std::uint64_t m_Words[2];
    };
    struct Long {
        alignas(8) const char16_t* m_Text;
        alignas(8) std::uint32_t m_Length;
        std::uint32_t m_Zero;
    };
    static_assert(sizeof(Short) == sizeof(Long) && std::endian::native == std::endian::little);

    union {
        Short m_Short;
        Long m_Long;
    };
};

} // namespace Corvid
