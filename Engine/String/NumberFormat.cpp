#include "Engine/String/NumberFormat.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cstring>

namespace Corvid {
namespace {

constexpr int kDoubleFractionBits = 52;
constexpr int kDoubleExponentMask = 0x7FF;
constexpr int kDoubleIntegerExponent = 1075; // the exponent field at which the last fraction bit is worth 1

char* CopyText(char* out, const char* text, std::size_t length) {
    std::memcpy(out, text, length);
    return out + length;
}

// `digits` decimal digits, leading zeros included.
char* FormatPadded(char* out, std::uint32_t value, int digits) {
    for (int i = digits - 1; i >= 0; --i, value /= 10)
        out[i] = static_cast<char>('0' + value % 10);
    return out + digits;
}

// fraction * 2^-shift * scale, rounded half to even to an integer; fraction < 2^shift and < 2^53, scale <= 10^6.
std::uint32_t ScaleFraction(std::uint64_t fraction, int shift, std::uint32_t scale) {
    if (shift > 73) // the product is below 2^73, less than a half
        return 0;
    if (shift <= 32) {
        fraction <<= 32;
        shift += 32;
    }
    // The product takes up to 84 bits: high * 2^32 + low.
    const std::uint64_t low = (fraction & 0xFFFFFFFF) * scale;
    const std::uint64_t high = (fraction >> 32) * scale + (low >> 32);
    const int highShift = shift - 32;
    const std::uint64_t quotient = high >> highShift;
    const std::uint64_t remainder = high - (quotient << highShift);
    const std::uint64_t half = (std::uint64_t{1} << highShift) >> 1;
    const bool anyLow = (low & 0xFFFFFFFF) != 0;
    const bool up = remainder > half || (remainder == half && (anyLow || (quotient & 1) != 0));
    return static_cast<std::uint32_t>(quotient) + (up ? 1 : 0);
}

// significand * 2^power, every digit, in groups of nine digits.
char* FormatLargeInteger(char* out, std::uint64_t significand, int power) {
    constexpr std::uint32_t kGroup = 1'000'000'000;
    constexpr int kStep = 29; // a group times 2^29 plus a carry fits 64 bits
    std::array<std::uint32_t, 35> groups{};
    std::size_t used = 0;
    for (; significand != 0; significand /= kGroup)
        groups[used++] = static_cast<std::uint32_t>(significand % kGroup);
    for (; power > 0; power -= kStep) {
        const int step = power < kStep ? power : kStep;
        std::uint64_t carry = 0;
        for (std::size_t i = 0; i < used; ++i) {
            carry += std::uint64_t{groups[i]} << step;
            groups[i] = static_cast<std::uint32_t>(carry % kGroup);
            carry /= kGroup;
        }
        if (carry != 0)
            groups[used++] = static_cast<std::uint32_t>(carry);
    }
    out = std::to_chars(out, out + kMaxIntText, groups[--used]).ptr;
    while (used > 0)
        out = FormatPadded(out, groups[--used], 9);
    return out;
}

// The exact expansion to two or six decimals.
char* FormatFixed(char* out, double value, int decimals) {
    const std::uint64_t bits = std::bit_cast<std::uint64_t>(value);
    const int exponent = static_cast<int>(bits >> kDoubleFractionBits) & kDoubleExponentMask;
    std::uint64_t significand = bits & ((std::uint64_t{1} << kDoubleFractionBits) - 1);
    if ((bits >> 63) != 0)
        *out++ = '-';
    if (exponent == kDoubleExponentMask)
        return CopyText(out, significand == 0 ? "inf" : "nan", 3);
    if (exponent != 0)
        significand |= std::uint64_t{1} << kDoubleFractionBits;
    const int shift = kDoubleIntegerExponent - (exponent != 0 ? exponent : 1); // the value is significand * 2^-shift

    std::uint32_t fraction = 0;
    if (shift <= 0) {
        out = FormatLargeInteger(out, significand, -shift);
    } else {
        const std::uint32_t scale = decimals == 2 ? 100 : 1'000'000;
        std::uint64_t integer = shift > kDoubleFractionBits ? 0 : significand >> shift;
        fraction =
            ScaleFraction(shift > kDoubleFractionBits ? significand : significand - (integer << shift), shift, scale);
        if (fraction == scale) {
            fraction = 0;
            ++integer;
        }
        out = std::to_chars(out, out + kMaxInt64Text, integer).ptr;
    }
    *out++ = '.';
    return FormatPadded(out, fraction, decimals);
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
        return FormatFixed(out, value, 6);
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
    return FormatFixed(out, value, 2);
}

char* FormatDouble(char* out, double value) {
    return FormatFixed(out, value, 6);
}

char* FormatDoubleShort(char* out, double value) {
    return FormatFixed(out, value, 2);
}

} // namespace Corvid
