#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include "Engine/String/NumberFormatFast.h"

namespace Corvid {

// Numbers into ASCII text. Every function writes from `out` on and returns the end of the text; no terminator.
// The caller provides the stated number of bytes plus kFormatSlack: a function may scribble up to that many bytes
// behind the text that it returns.
inline constexpr std::size_t kFormatSlack = 16;
inline constexpr std::size_t kMaxIntText = 11;     // -2147483648
inline constexpr std::size_t kMaxInt64Text = 20;   // -9223372036854775808
inline constexpr std::size_t kMaxHexText = 8;      // ffffffff
inline constexpr std::size_t kMaxFloatText = 47;   // sign, 39 digits of FLT_MAX, point, 6 decimals
inline constexpr std::size_t kMaxDoubleText = 317; // sign, 309 digits of DBL_MAX, point, 6 decimals

char* FormatInt(char* out, std::int32_t value);   // "%d"
char* FormatInt64(char* out, std::int64_t value); // "%I64d"
char* FormatHex(char* out, std::uint32_t value);  // "%x"

// The exact decimal expansion rounded half to even at the last decimal, every digit of a large value included, and
// "inf", "-inf", "nan", "-nan"; negative zero keeps its sign.
char* FormatFloat(char* out, float value);        // "%f"
char* FormatFloatShort(char* out, float value);   // "%.2f"
char* FormatDouble(char* out, double value);      // "%f"
char* FormatDoubleShort(char* out, double value); // "%.2f"

// The same for every value; the inline functions try the common ranges first.
char* FormatIntOfAnySize(char* out, std::int32_t value);
char* FormatFloatOfAnySize(char* out, float value);

inline char* FormatInt(char* out, std::int32_t value) {
    const std::uint32_t bits = static_cast<std::uint32_t>(value);
    return bits < NumberDetail::kMillion ? NumberDetail::WriteShortInteger(out, bits) : FormatIntOfAnySize(out, value);
}

// Below 1000 in about 40 instructions, without a loop: a float has 24 significant bits and 10^6 is 2^6 times 14 bits,
// so the product is exact in double, and the conversion to an integer is the only rounding, half to even.
inline char* FormatFloat(char* out, float value) {
#if defined(__SSE2__)
    constexpr std::uint32_t kLimit = std::bit_cast<std::uint32_t>(1000.0f);
    const std::uint32_t bits = std::bit_cast<std::uint32_t>(value);
    const std::uint32_t magnitude = bits & 0x7FFFFFFF;
    if (magnitude < kLimit) [[likely]] {
        *out = '-';
        out += bits >> 31;
        const double scaled = static_cast<double>(std::bit_cast<float>(magnitude)) * 1e6;
        const auto millionths = static_cast<std::uint32_t>(_mm_cvtsd_si32(_mm_set_sd(scaled)));
        const std::uint32_t integer = millionths / NumberDetail::kMillion;
        out = NumberDetail::WriteLeadingGroup(out, integer);
        return NumberDetail::WriteMillionths(out, millionths - integer * NumberDetail::kMillion);
    }
#endif
    return FormatFloatOfAnySize(out, value);
}

} // namespace Corvid
