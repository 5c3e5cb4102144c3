#include "Engine/String/NumberFormatExact.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "Engine/String/NumberFormatFast.h"

namespace Corvid {

namespace {

using NumberDetail::kMillion;
using NumberDetail::kThousand;

// From here on the next float is at least 1.9 * 10^-6 away, and six decimals err by half of 10^-6 at the most.
constexpr std::uint32_t kSixDecimalsSuffice = std::bit_cast<std::uint32_t>(16.0f);
// From here on at most nine decimals are needed.
constexpr std::uint32_t kNineDecimalsSuffice = std::bit_cast<std::uint32_t>(0.015625f);

constexpr int kFloatFractionBits = 23;

// Half to even; below 2^31.
std::uint32_t Round(double value) {
#if defined(__SSE2__)
    return static_cast<std::uint32_t>(_mm_cvtsd_si32(_mm_set_sd(value)));
#else
    return static_cast<std::uint32_t>(std::lrint(value));
#endif
}

// What the floats between two powers of two have in common: so many decimals always bring one back, since they err by
// less than half of its distance to the next; one decimal less may do.
struct Binade {
    double m_Scale;               // 10^m_Decimals
    double m_ShorterScale;        // a tenth of it
    double m_ShorterHalfDistance; // half of the distance, times m_ShorterScale
    std::uint32_t m_Decimals;
    std::uint32_t m_ToBillionths; // 10^(9 - m_Decimals)
};

// From kNineDecimalsSuffice to kSixDecimalsSuffice.
constexpr std::array<Binade, 10> kBinades = [] {
    std::array<Binade, 10> binades{};
    double distance = 0x1p-29;
    for (Binade& binade : binades) {
        std::uint32_t decimals = 9;
        std::uint32_t toBillionths = 1;
        double scale = 1e9;
        for (; scale / 10 * distance > 1; scale /= 10, toBillionths *= 10)
            --decimals;
        binade = {scale, scale / 10, distance / 2 * (scale / 10), decimals, toBillionths};
        distance *= 2;
    }
    return binades;
}();
static_assert(kBinades.front().m_Decimals == 9 && kBinades.back().m_Decimals == 7);

// A magnitude between the two limits that six decimals do not bring back, so no power of two: the next floats are
// equally far away on both sides. Of each number of decimals only the nearest value can be the one; it is when it is
// less than half the distance away. Everything is exact in double: 24 bits times 5^9 take 45. Halfway between two
// floats there is nothing with so few decimals.
char* FormatShortestQuick(char* out, float magnitude) {
    const std::uint32_t bits = std::bit_cast<std::uint32_t>(magnitude);
    const Binade& binade = kBinades[(bits - kNineDecimalsSuffice) >> kFloatFractionBits];
    const double exact = magnitude;
    const double shorter = exact * binade.m_ShorterScale;
    const std::uint32_t shorterDigits = Round(shorter);
    const double error = std::abs(shorter - static_cast<std::int32_t>(shorterDigits));
    const bool isShorter = error < binade.m_ShorterHalfDistance;
    std::uint32_t digits = isShorter ? shorterDigits * 10 : Round(exact * binade.m_Scale);
    std::uint32_t decimals = binade.m_Decimals - (isShorter ? 1 : 0);
    if (isShorter && decimals > 7) [[unlikely]] {
        double scale = binade.m_ShorterScale / 10;
        double halfDistance = binade.m_ShorterHalfDistance / 10;
        std::uint32_t factor = 100;
        for (; decimals > 7; --decimals, scale /= 10, halfDistance /= 10, factor *= 10) {
            const std::uint32_t candidate = Round(exact * scale);
            if (!(std::abs(exact * scale - candidate) < halfDistance))
                break;
            digits = candidate * factor;
        }
    }
    constexpr std::uint32_t kBillion = 1'000'000'000;
    const std::uint64_t billionths = std::uint64_t{digits} * binade.m_ToBillionths;
    const auto integer = static_cast<std::uint32_t>(billionths / kBillion);
    const auto fraction = static_cast<std::uint32_t>(billionths - std::uint64_t{integer} * kBillion);
    out = NumberDetail::WriteLeadingGroup(out, integer);
    *out++ = '.';
    NumberDetail::WriteGroup(out, fraction / kMillion);
    NumberDetail::WriteGroup(out + 3, fraction / kThousand % kThousand);
    NumberDetail::WriteGroup(out + 6, fraction % kThousand);
    return out + decimals;
}

char* Append(char* out, std::string_view text) {
    std::memcpy(out, text.data(), text.size());
    return out + text.size();
}

char* AppendZeros(char* out, int count) {
    std::memset(out, '0', static_cast<std::size_t>(count));
    return out + count;
}

// What the standard library finds, in our notation.
template <class Float> char* FormatShortest(char* out, Float value) {
    char text[32];
    const char* const end = std::to_chars(text, text + sizeof text, value, std::chars_format::scientific).ptr;
    const char* const exponentMark = std::find(text, const_cast<char*>(end), 'e');
    const char* position = text;
    if (*position == '-')
        *out++ = *position++;
    char digits[24];
    char* const digitsEnd = std::remove_copy(position, exponentMark, digits, '.');
    const std::string_view all(digits, static_cast<std::size_t>(digitsEnd - digits));
    const int count = static_cast<int>(all.size());
    const std::string_view exponentText(exponentMark, static_cast<std::size_t>(end - exponentMark)); // e-07
    int exponent = 0; // of the first digit
    std::from_chars(exponentMark + 2, end, exponent);
    if (exponentMark[1] == '-')
        exponent = -exponent;

    const int integerDigits = std::max(exponent + 1, 1);
    const int fractionDigits = std::max(count - 1 - exponent, 1);
    const int exponentLength = std::max(count, 2) + 1 + static_cast<int>(exponentText.size());
    if (exponentLength < integerDigits + 1 + fractionDigits) {
        *out++ = digits[0];
        *out++ = '.';
        out = count > 1 ? Append(out, all.substr(1)) : AppendZeros(out, 1);
        return Append(out, exponentText);
    }
    if (exponent < 0)
        return Append(AppendZeros(Append(out, "0."), -exponent - 1), all);
    const auto kept = static_cast<std::size_t>(std::min(count, integerDigits));
    out = AppendZeros(Append(out, all.substr(0, kept)), integerDigits - static_cast<int>(kept));
    *out++ = '.';
    return count > integerDigits ? Append(out, all.substr(kept)) : AppendZeros(out, 1);
}

} // namespace

char* FormatFloatExact(char* out, float value) {
    const std::uint32_t bits = std::bit_cast<std::uint32_t>(value);
    const std::uint32_t magnitudeBits = bits & 0x7FFFFFFF;
    if (magnitudeBits >= kSixDecimalsSuffice)
        return FormatFloat(out, value);
    const auto magnitude = std::bit_cast<float>(magnitudeBits);
    // The product is exact, and so are both numbers of the quotient, below 2^24: it is the float that the text stands
    // for.
    const std::uint32_t millionths = Round(static_cast<double>(magnitude) * 1e6);
    const float readBack = static_cast<float>(static_cast<std::int32_t>(millionths)) / 1e6f;
    if (std::bit_cast<std::uint32_t>(readBack) == magnitudeBits) {
        *out = '-';
        out += bits >> 31;
        const std::uint32_t integer = millionths / kMillion;
        out = NumberDetail::WriteLeadingGroup(out, integer);
        return NumberDetail::WriteMillionths(out, millionths - integer * kMillion);
    }
    if (magnitudeBits < kNineDecimalsSuffice)
        return FormatShortest(out, value);
    *out = '-';
    return FormatShortestQuick(out + (bits >> 31), magnitude);
}

char* FormatDoubleExact(char* out, double value) {
    char* const end = FormatDouble(out, value);
    double readBack = value;
    if (std::isfinite(value))
        std::from_chars(out, end, readBack);
    return std::bit_cast<std::uint64_t>(readBack) == std::bit_cast<std::uint64_t>(value) ? end
                                                                                         : FormatShortest(out, value);
}

} // namespace Corvid
