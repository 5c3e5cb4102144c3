#pragma once

// The shapes that fill large text files, each parsed from one 16-byte load without a loop: all characters are checked
// at once and all digits summed at once, in about 32 instructions for a six-decimal value and 25 for an index. Every
// function returns nullptr for any other shape, and for text that it cannot decide; the general way takes those.

#if defined(__SSE4_1__)

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

#include <smmintrin.h>

namespace Corvid::NumberDetail {

// Shuffle rows that move `n` leading characters in front of lane 8, and what follows them from lane 8 on: lane L of the
// row at [n] takes character L + n - 8; lanes without one become zero.
using AlignmentRows = std::array<std::int8_t, 32>;
inline constexpr AlignmentRows kAlignment = [] {
    AlignmentRows rows{};
    for (std::size_t i = 0; i < rows.size(); ++i)
        rows[i] = static_cast<std::int8_t>(i < 8 || i >= 24 ? -128 : static_cast<int>(i) - 8);
    return rows;
}();

// What the sign of a six-decimal value decides: a minus, which is character 0, becomes zero too and negates the scale.
struct alignas(64) SignCase {
    AlignmentRows m_Alignment = kAlignment;
    double m_Scale = 1e-6;
};
inline constexpr std::array<SignCase, 2> kSignCases = [] {
    std::array<SignCase, 2> cases{};
    cases[1].m_Alignment[8] = -128;
    cases[1].m_Scale = -1e-6;
    return cases;
}();

// A lane holding more than 9 reaches the top bit when this is added to it.
inline constexpr char kAboveNine = 127 - 9;

inline __m128i LoadText(const void* text) {
    return _mm_loadu_si128(static_cast<const __m128i*>(text));
}

// The lowest set one of 16 bits, 16 without one.
inline std::size_t FirstBit(int bits) {
    return static_cast<unsigned>(std::countr_zero(static_cast<unsigned>(bits) | 0x10000));
}

// Up to eight digits, a point, six digits, and then a character that is no digit, no letter and no point.
//
// Multiplying by the double nearest 10^-6 suffices, although it is rounded twice. That double is too small by less than
// 0.41 * 2^-53 of itself, so:
// - A quotient that a double holds comes out exactly: what is missing is less than half a unit of its last place. That
//   covers the middles between two floats that the text can state; the conversion rounds them half to even.
// - Any other quotient q by 10^6 differs from each middle by at least min(u, 2^-6) / 5^6, u being the weight of the
//   middle's 25th and last bit. The product is off by less than 2^-52 of q, which is u * 2^-27. With q below 2^27, so u
//   at most 4, it stays on the right side of the middle.
inline const char* ScanCanonicalFloat(const char* position, const char* end, float& value) {
    constexpr int kPointLane = 8;
    constexpr int kEndLane = 15;
    // One compare finds both the sign and the point, so that where the number ends does not wait for its sign.
    const __m128i text = LoadText(position);
    const __m128i kinds = _mm_setr_epi8('-', '.', '.', '.', '.', '.', '.', '.', '.', '.', '.', '.', '.', '.', '.', '.');
    const int marks = _mm_movemask_epi8(_mm_cmpeq_epi8(text, kinds));
    const SignCase& sign = kSignCases[static_cast<std::size_t>(marks & 1)];
    const std::size_t point = FirstBit(marks & ~1);
    const __m128i lanes = _mm_shuffle_epi8(_mm_sub_epi8(text, _mm_set1_epi8('0')), LoadText(&sign.m_Alignment[point]));
    // Digits stay below the top bit; the point and the character behind the number have it. A point further right
    // than eight characters leaves the last lane zero.
    const __m128i limits =
        _mm_setr_epi8(kAboveNine, kAboveNine, kAboveNine, kAboveNine, kAboveNine, kAboveNine, kAboveNine, kAboveNine, 0,
                      kAboveNine, kAboveNine, kAboveNine, kAboveNine, kAboveNine, kAboveNine, 0);
    if (_mm_movemask_epi8(_mm_adds_epu8(lanes, limits)) != ((1 << kPointLane) | (1 << kEndLane)))
        return nullptr;
    const char* const behind = position + point + 7;
    if (behind > end)
        return nullptr;
    const __m128i pairs = _mm_maddubs_epi16(lanes, _mm_setr_epi8(10, 1, 10, 1, 10, 1, 10, 1, 0, 1, 10, 1, 10, 1, 1, 0));
    const __m128i groups = _mm_madd_epi16(pairs, _mm_setr_epi16(100, 1, 100, 1, 100, 1, 10, 1));
    const __m128i parts =
        _mm_madd_epi16(_mm_packs_epi32(groups, groups), _mm_setr_epi16(10000, 1, 1000, 1, 0, 0, 0, 0));
    const __m128d millionths = _mm_dp_pd(_mm_cvtepi32_pd(parts), _mm_setr_pd(1e6, 1.0), 0x31);
    value = static_cast<float>(_mm_cvtsd_f64(millionths) * sign.m_Scale);
    return behind;
}

// One to eight digits without a sign.
inline const char* ScanShortInt(const char* position, const char* end, std::int32_t& value) {
    const __m128i digits = _mm_sub_epi8(LoadText(position), _mm_set1_epi8('0'));
    const std::size_t count = FirstBit(_mm_movemask_epi8(_mm_adds_epu8(digits, _mm_set1_epi8(kAboveNine))));
    const char* const behind = position + count;
    if (count - 1 >= 8 || behind > end)
        return nullptr;
    const __m128i lanes = _mm_shuffle_epi8(digits, LoadText(&kAlignment[count]));
    const __m128i pairs = _mm_maddubs_epi16(lanes, _mm_set1_epi16(1 << 8 | 10));
    const __m128i groups = _mm_madd_epi16(pairs, _mm_set1_epi32(1 << 16 | 100));
    const __m128i parts = _mm_madd_epi16(_mm_packs_epi32(groups, groups), _mm_set1_epi32(1 << 16 | 10000));
    value = _mm_cvtsi128_si32(parts);
    return behind;
}

} // namespace Corvid::NumberDetail

#endif
