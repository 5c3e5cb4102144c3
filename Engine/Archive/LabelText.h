#pragma once

#include <bit>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "Engine/Archive/Label.h"

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace Corvid {

// A label's characters, one byte each, as files hold them. The copy is for reports and rare uses; archives match and
// write labels with the functions, which make do with a few instructions for a short one.
class LabelText {
public:
    explicit LabelText(Label label) : m_Length(static_cast<std::size_t>(Write(label, m_Bytes) - m_Bytes)) {}

    operator std::string_view() const { return {m_Bytes, m_Length}; } // while this object lives

    // So many bytes must be accessible behind `bytes`, whatever they hold.
    static constexpr std::size_t kAccessibleBytes = 48;

    static std::size_t GetLength(Label label) {
        const std::uint64_t length = WordsOf(label).m_Words[1] >> 56;
        return length != 0 ? static_cast<std::size_t>(length) : LongOf(label).m_Length;
    }

    // The place behind the label if `bytes` begins with it, else null.
    static const char* Match(Label label, const char* bytes) {
        const Label::Short words = WordsOf(label);
        const std::uint64_t length = words.m_Words[1] >> 56;
        if (length == 0) [[unlikely]]
            return MatchLong(LongOf(label), bytes);
#ifdef __SSE2__
        const __m128i expected =
            _mm_set_epi64x(static_cast<std::int64_t>(words.m_Words[1]), static_cast<std::int64_t>(words.m_Words[0]));
        const __m128i equal = _mm_cmpeq_epi8(expected, _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes)));
        const auto different = static_cast<std::uint32_t>(~_mm_movemask_epi8(equal));
        return static_cast<std::uint32_t>(std::countr_zero(different)) >= length ? bytes + length : nullptr;
#else
        return std::memcmp(bytes, words.m_Words, static_cast<std::size_t>(length)) == 0 ? bytes + length : nullptr;
#endif
    }

    // Returns the end; may scribble behind it.
    static char* Write(Label label, char* bytes) {
        const Label::Short words = WordsOf(label);
        const std::uint64_t length = words.m_Words[1] >> 56;
        if (length == 0) [[unlikely]]
            return WriteLong(LongOf(label), bytes);
        std::memcpy(bytes, words.m_Words, sizeof words.m_Words);
        return bytes + length;
    }

private:
    static Label::Short WordsOf(Label label) {
        return std::bit_cast<Label::Short>(label);
    }
    static Label::Long LongOf(Label label) {
        return std::bit_cast<Label::Long>(label);
    }

    static const char* MatchLong(const Label::Long& label, const char* bytes) {
        for (std::uint32_t i = 0; i < label.m_Length; ++i) {
            if (bytes[i] != static_cast<char>(label.m_Text[i]))
                return nullptr;
        }
        return bytes + label.m_Length;
    }
    static char* WriteLong(const Label::Long& label, char* bytes) {
        for (std::uint32_t i = 0; i < label.m_Length; ++i)
            *bytes++ = static_cast<char>(label.m_Text[i]);
        return bytes;
    }

    char m_Bytes[kAccessibleBytes];
    std::size_t m_Length;
};

} // namespace Corvid
