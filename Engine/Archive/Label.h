#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>

namespace Corvid {

// The name of an archived value: 1 to 127 printable ASCII characters, the first of them no blank. The compiler makes it
// from a literal; OwnedLabel.h has those that are made at run time. Archives that have no labels ignore it.
//
// Sixteen bytes, passed in registers: a label of up to 15 characters as such, its length in the last byte; a longer one
// as a pointer to its text, with a last byte of zero. LabelText.h makes use of that.
class Label {
public:
    static constexpr std::size_t kMaxLength = 127;
    static constexpr std::size_t kMaxShortLength = 15;

    template <std::size_t Size> consteval Label(const char16_t (&text)[Size]) : Label(text, Size - 1) {
        if (!IsLabel(text, Size - 1))
            throw "a label is 1 to 127 characters of printable ASCII and does not begin with a blank";
    }

private:
    friend class LabelText;
    friend class OwnedLabel;

    static constexpr bool IsLabel(const char16_t* text, std::size_t length) {
        if (length < 1 || length > kMaxLength || text[0] == u' ')
            return false;
        for (std::size_t i = 0; i < length; ++i) {
            if (text[i] < u' ' || text[i] > u'~')
                return false;
        }
        return true;
    }

    // A long text outlives the label.
    constexpr Label(const char16_t* text, std::size_t length) : m_Short{} {
        if (length <= kMaxShortLength) {
            for (std::size_t i = 0; i < length; ++i)
                m_Short.m_Words[i / 8] |= std::uint64_t{text[i]} << (8 * (i % 8));
            m_Short.m_Words[1] |= std::uint64_t{length} << 56;
        } else {
            m_Long = {text, static_cast<std::uint32_t>(length), 0};
        }
    }

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
