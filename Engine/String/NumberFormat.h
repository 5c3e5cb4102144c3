#pragma once

#include <cstddef>
#include <cstdint>

namespace Corvid {

// Numbers into ASCII text. Every function writes from `out` on and returns the end of the text; no terminator.
// The caller provides the stated number of bytes plus kFormatSlack: a function may scribble up to that many bytes
// behind the text that it returns.
inline constexpr std::size_t kFormatSlack = 16;
inline constexpr std::size_t kMaxIntText = 11;    // -2147483648
inline constexpr std::size_t kMaxInt64Text = 20;  // -9223372036854775808
inline constexpr std::size_t kMaxHexText = 8;     // ffffffff
inline constexpr std::size_t kMaxFloatText = 47;  // sign, 39 digits of FLT_MAX, point, 6 decimals
inline constexpr std::size_t kMaxDoubleText = 317; // sign, 309 digits of DBL_MAX, point, 6 decimals

char* FormatInt(char* out, std::int32_t value);     // "%d"
char* FormatInt64(char* out, std::int64_t value);   // "%I64d"
char* FormatHex(char* out, std::uint32_t value);    // "%x"

// The exact decimal expansion rounded half to even at the last decimal, every digit of a large value included, and
// "inf", "-inf", "nan", "-nan"; negative zero keeps its sign.
char* FormatFloat(char* out, float value);          // "%f"
char* FormatFloatShort(char* out, float value);     // "%.2f"
char* FormatDouble(char* out, double value);        // "%f"
char* FormatDoubleShort(char* out, double value);   // "%.2f"

} // namespace Corvid
