#include "Engine/String/NumberFormat.h"

#include <algorithm>
#include <bit>
#include <charconv>

namespace Corvid {
namespace {

// In `room` bytes, which hold every value of the type that it comes from.
char* FormatFixed(char* out, std::size_t room, double value, int decimals) {
    return std::to_chars(out, out + room, value, std::chars_format::fixed, decimals).ptr;
}

} // namespace

char* FormatIntOfAnySize(char* out, std::int32_t value) {
    return std::to_chars(out, out + kMaxIntText, value).ptr;
}

char* FormatInt64(char* out, std::int64_t value) {
    return std::to_chars(out, out + kMaxInt64Text, value).ptr;
}

char* FormatHex(char* out, std::uint32_t value) {
    return std::to_chars(out, out + kMaxHexText, value, 16).ptr;
}

// Below 2^23 the value is significand * 2^-shift with a significand below 2^24, so times 10^6 it fits 64 bits: integer
// operations alone, exact on any processor.
char* FormatFloatOfAnySize(char* out, float value) {
    constexpr std::uint32_t kLimit = std::bit_cast<std::uint32_t>(8388608.0f);
    constexpr std::uint32_t kFractionBits = 23;
    constexpr std::uint32_t kIntegerExponent = 150; // the exponent field at which the last fraction bit is worth 1
    constexpr std::uint32_t kMaxShift = 63;         // every product is less than half of 2^63
    const std::uint32_t bits = std::bit_cast<std::uint32_t>(value);
    const std::uint32_t magnitude = bits & 0x7FFFFFFF;
    if (magnitude >= kLimit)
        return FormatFixed(out, kMaxFloatText, value, 6);
    const std::uint32_t shift = std::min(kIntegerExponent - (magnitude >> kFractionBits), kMaxShift);
    const std::uint32_t hiddenBit = std::uint32_t{1} << kFractionBits; // in denormals too: they are far below 10^-6
    const std::uint64_t product = std::uint64_t{(magnitude & (hiddenBit - 1)) | hiddenBit} * NumberDetail::kMillion;
    // Half to even: one less than a half rounds up what is above the middle, the odd bit the middle itself.
    const std::uint64_t almostHalf = (std::uint64_t{1} << (shift - 1)) - 1;
    const std::uint64_t scaled = (product + almostHalf + (product >> shift & 1)) >> shift;

    *out = '-';
    out += bits >> 31;
    const auto integer = static_cast<std::uint32_t>(scaled / NumberDetail::kMillion);
    out = FormatInt(out, static_cast<std::int32_t>(integer));
    const std::uint64_t whole = std::uint64_t{integer} * NumberDetail::kMillion;
    return NumberDetail::WriteMillionths(out, static_cast<std::uint32_t>(scaled - whole));
}

char* FormatFloatShort(char* out, float value) {
    return FormatFixed(out, kMaxFloatText, value, 2);
}

char* FormatDouble(char* out, double value) {
    return FormatFixed(out, kMaxDoubleText, value, 6);
}

char* FormatDoubleShort(char* out, double value) {
    return FormatFixed(out, kMaxDoubleText, value, 2);
}

} // namespace Corvid
