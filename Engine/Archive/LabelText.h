#pragma once

#include <cstdint>
#include <cstring>
#include <string_view>

#include "Engine/Archive/Label.h"

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace Corvid {

// What archives do with a label's characters. Files hold one byte a character, labels are UTF-16: with SSE2 both
// directions take a load, a pack and a store or compare for each 16 characters. The blocks at the two ends of a label
// overlap, so nothing is read beyond it.
class LabelText {
public:
    // The file's side of Matches and Write: this many bytes must be accessible, whatever they hold.
    static constexpr std::size_t kAccessibleBytes = 48;

    static std::u16string_view Get(Label label) { return {label.m_Text, label.m_Length}; }
    static std::uint32_t GetLength(Label label) { return label.m_Length; }

    static bool Matches(Label label, const char* bytes);
    static char* Write(Label label, char* bytes); // returns the end

private:
#ifdef __SSE2__
    static __m128i Pack16(const char16_t* text) {
        const auto* units = reinterpret_cast<const __m128i*>(text);
        return _mm_packus_epi16(_mm_loadu_si128(units), _mm_loadu_si128(units + 1));
    }
    static __m128i Pack8(const char16_t* text) {
        const __m128i units = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text));
        return _mm_packus_epi16(units, units);
    }
    static std::uint32_t Pack4(const char16_t* text) {
        const __m128i units = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(text));
        return static_cast<std::uint32_t>(_mm_cvtsi128_si32(_mm_packus_epi16(units, units)));
    }
    static bool Equals16(const char16_t* text, const char* bytes) {
        const __m128i equal = _mm_cmpeq_epi8(Pack16(text), _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes)));
        return _mm_movemask_epi8(equal) == 0xFFFF;
    }
    static bool Equals8(const char16_t* text, const char* bytes) {
        const __m128i equal = _mm_cmpeq_epi8(Pack8(text), _mm_loadl_epi64(reinterpret_cast<const __m128i*>(bytes)));
        return (_mm_movemask_epi8(equal) & 0xFF) == 0xFF;
    }
    static bool Equals4(const char16_t* text, const char* bytes) {
        std::uint32_t word;
        std::memcpy(&word, bytes, sizeof word);
        return Pack4(text) == word;
    }
    static void Write16(const char16_t* text, char* bytes) {
        _mm_storeu_si128(reinterpret_cast<__m128i*>(bytes), Pack16(text));
    }
    static void Write8(const char16_t* text, char* bytes) {
        _mm_storel_epi64(reinterpret_cast<__m128i*>(bytes), Pack8(text));
    }
    static void Write4(const char16_t* text, char* bytes) {
        const std::uint32_t word = Pack4(text);
        std::memcpy(bytes, &word, sizeof word);
    }
#endif
};

#ifdef __SSE2__

inline bool LabelText::Matches(Label label, const char* bytes) {
    const char16_t* const text = label.m_Text;
    const std::uint32_t length = label.m_Length;
    if (length >= 16) {
        for (std::uint32_t i = 0; i + 16 < length; i += 16) {
            if (!Equals16(text + i, bytes + i))
                return false;
        }
        return Equals16(text + length - 16, bytes + length - 16);
    }
    if (length >= 8)
        return Equals8(text, bytes) && Equals8(text + length - 8, bytes + length - 8);
    if (length >= 4)
        return Equals4(text, bytes) && Equals4(text + length - 4, bytes + length - 4);
    return bytes[0] == static_cast<char>(text[0]) && bytes[length / 2] == static_cast<char>(text[length / 2]) &&
           bytes[length - 1] == static_cast<char>(text[length - 1]);
}

inline char* LabelText::Write(Label label, char* bytes) {
    const char16_t* const text = label.m_Text;
    const std::uint32_t length = label.m_Length;
    if (length >= 16) {
        for (std::uint32_t i = 0; i + 16 < length; i += 16)
            Write16(text + i, bytes + i);
        Write16(text + length - 16, bytes + length - 16);
    } else if (length >= 8) {
        Write8(text, bytes);
        Write8(text + length - 8, bytes + length - 8);
    } else if (length >= 4) {
        Write4(text, bytes);
        Write4(text + length - 4, bytes + length - 4);
    } else {
        bytes[0] = static_cast<char>(text[0]);
        bytes[length / 2] = static_cast<char>(text[length / 2]);
        bytes[length - 1] = static_cast<char>(text[length - 1]);
    }
    return bytes + length;
}

#else

inline bool LabelText::Matches(Label label, const char* bytes) {
    for (std::uint32_t i = 0; i < label.m_Length; ++i) {
        if (bytes[i] != static_cast<char>(label.m_Text[i]))
            return false;
    }
    return true;
}

inline char* LabelText::Write(Label label, char* bytes) {
    for (std::uint32_t i = 0; i < label.m_Length; ++i)
        *bytes++ = static_cast<char>(label.m_Text[i]);
    return bytes;
}

#endif

} // namespace Corvid
