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
    // The eight characters at either place, the four at either place.
    static __m128i Pack8And8(const char16_t* text, const char16_t* other) {
        return _mm_packus_epi16(_mm_loadu_si128(reinterpret_cast<const __m128i*>(text)),
                                _mm_loadu_si128(reinterpret_cast<const __m128i*>(other)));
    }
    static __m128i Pack4And4(const char16_t* text, const char16_t* other) {
        const __m128i units = Load8And8(text, other);
        return _mm_packus_epi16(units, units);
    }
    static __m128i Load8And8(const void* bytes, const void* other) {
        const __m128i low = _mm_loadl_epi64(static_cast<const __m128i*>(bytes));
        return _mm_unpacklo_epi64(low, _mm_loadl_epi64(static_cast<const __m128i*>(other)));
    }
    static bool AreEqual(__m128i a, __m128i b) {
        return _mm_movemask_epi8(_mm_cmpeq_epi8(a, b)) == 0xFFFF;
    }
    static bool Equals16(const char16_t* text, const char* bytes) {
        return AreEqual(Pack16(text), _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes)));
    }
    static void Write16(const char16_t* text, char* bytes) {
        _mm_storeu_si128(reinterpret_cast<__m128i*>(bytes), Pack16(text));
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
    if (length >= 8) {
        const std::uint32_t tail = length - 8;
        return AreEqual(Pack8And8(text, text + tail), Load8And8(bytes, bytes + tail));
    }
    if (length >= 4) {
        const std::uint32_t tail = length - 4;
        std::uint32_t words[2];
        std::memcpy(&words[0], bytes, 4);
        std::memcpy(&words[1], bytes + tail, 4);
        std::uint64_t label64;
        _mm_storel_epi64(reinterpret_cast<__m128i*>(&label64), Pack4And4(text, text + tail));
        return label64 == (words[0] | std::uint64_t(words[1]) << 32);
    }
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
        const std::uint32_t tail = length - 8;
        const __m128i packed = Pack8And8(text, text + tail);
        _mm_storel_epi64(reinterpret_cast<__m128i*>(bytes), packed);
        _mm_storeh_pd(reinterpret_cast<double*>(bytes + tail), _mm_castsi128_pd(packed));
    } else if (length >= 4) {
        const std::uint32_t tail = length - 4;
        std::uint32_t words[2];
        _mm_storel_epi64(reinterpret_cast<__m128i*>(words), Pack4And4(text, text + tail));
        std::memcpy(bytes, &words[0], 4);
        std::memcpy(bytes + tail, &words[1], 4);
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
