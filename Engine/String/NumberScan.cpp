#include "Engine/String/NumberScan.h"

#include <array>
#include <bit>
#include <cfloat>
#include <charconv>
#include <limits>
#include <system_error>

namespace Corvid {
namespace {

constexpr std::uint32_t kNoDigit = 16;

bool IsDigit(char character) {
    return character >= '0' && character <= '9';
}

char ToLower(char character) {
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character + ('a' - 'A')) : character;
}

std::uint32_t HexDigit(char character) {
    const char lower = ToLower(character);
    if (IsDigit(lower))
        return static_cast<std::uint32_t>(lower - '0');
    return lower >= 'a' && lower <= 'f' ? static_cast<std::uint32_t>(lower - 'a') + 10 : kNoDigit;
}

// Steps over a sign and says whether it was a minus.
bool TakeSign(const char*& position, const char* end) {
    if (position == end || (*position != '-' && *position != '+'))
        return false;
    return *position++ == '-';
}

// The character behind `word` (lower case) when the text starts with it in any case, or nullptr.
const char* MatchWord(const char* position, const char* end, const char* word) {
    for (; *word != '\0'; ++word, ++position) {
        if (position == end || ToLower(*position) != *word)
            return nullptr;
    }
    return position;
}

// The optional "(...)" behind "nan": letters, digits and underscores; without its closing bracket it does not count.
const char* SkipNanDetail(const char* position, const char* end) {
    if (position == end || *position != '(')
        return position;
    for (const char* at = position + 1; at != end; ++at) {
        if (*at == ')')
            return at + 1;
        const char lower = ToLower(*at);
        if (!IsDigit(lower) && !(lower >= 'a' && lower <= 'z') && lower != '_')
            break;
    }
    return position;
}

template <class Unsigned> const char* ScanDecimal(const char* position, const char* end, Unsigned& value) {
    const bool negative = TakeSign(position, end);
    const char* const digits = position;
    Unsigned sum = 0;
    for (; position != end && IsDigit(*position); ++position)
        sum = sum * 10 + static_cast<Unsigned>(*position - '0');
    if (position == digits)
        return nullptr;
    value = negative ? Unsigned{0} - sum : sum;
    return position;
}

// Real numbers of at most 15 digits, whatever their notation, without the standard library: one correctly rounded
// operation on two exact doubles, in less than half its instructions.

// Digits with at most one point among them: an integer of at most 15 digits and how many of them are decimals.
struct Decimal {
    double m_Significand = 0;
    std::ptrdiff_t m_Decimals = 0;
};

#if defined(__SSE4_1__)

// Two shuffle rows, added: the row at kRightAlignment + n moves n leading characters to the right end; the row at
// kPointRemoval + n closes the gap of a point that has n digits behind it. Negative lanes become zero.
constexpr std::array<std::int8_t, 32> kRightAlignment = [] {
    std::array<std::int8_t, 32> rows{};
    for (int i = 0; i < 32; ++i)
        rows[static_cast<std::size_t>(i)] = static_cast<std::int8_t>(i - 16);
    return rows;
}();
constexpr std::array<std::int8_t, 32> kPointRemoval = {-1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1};

// The first character behind the digits, or nullptr when there are none, or more than fit. May run past `end`.
const char* TakeDecimal(const char* position, const char* /*end*/, Decimal& decimal) {
    using namespace NumberDetail;
    const __m128i digits = _mm_sub_epi8(LoadText(position), _mm_set1_epi8('0'));
    const int others = _mm_movemask_epi8(_mm_adds_epu8(digits, _mm_set1_epi8(kAboveNine)));
    const std::size_t whole = FirstBit(others);
    std::size_t length = whole;
    std::size_t decimals = 0;
    if (position[whole] == '.') {
        length = FirstBit(others & (others - 1));
        decimals = length - whole - 1;
    }
    if (length > 15 || whole + decimals == 0)
        return nullptr;
    const __m128i row =
        _mm_add_epi8(LoadText(&kRightAlignment[whole + 1 + decimals]), LoadText(&kPointRemoval[decimals]));
    const __m128i pairs = _mm_maddubs_epi16(_mm_shuffle_epi8(digits, row), _mm_set1_epi16(1 << 8 | 10));
    const __m128i groups = _mm_madd_epi16(pairs, _mm_set1_epi32(1 << 16 | 100));
    const __m128i parts = _mm_madd_epi16(_mm_packs_epi32(groups, groups), _mm_set1_epi32(1 << 16 | 10000));
    decimal.m_Significand = _mm_cvtsd_f64(_mm_dp_pd(_mm_cvtepi32_pd(parts), _mm_setr_pd(1e8, 1.0), 0x31));
    decimal.m_Decimals = static_cast<std::ptrdiff_t>(decimals);
    return position + length;
}

#else

const char* TakeDecimal(const char* position, const char* end, Decimal& decimal) {
    constexpr std::ptrdiff_t kMaxDigits = 15;
    std::uint64_t sum = 0;
    const char* at = position;
    for (; at < end && IsDigit(*at); ++at)
        sum = sum * 10 + static_cast<std::uint64_t>(*at - '0');
    std::ptrdiff_t digits = at - position;
    if (at < end && *at == '.') {
        const char* const fraction = ++at;
        for (; at < end && IsDigit(*at); ++at)
            sum = sum * 10 + static_cast<std::uint64_t>(*at - '0');
        decimal.m_Decimals = at - fraction;
        digits += decimal.m_Decimals;
    }
    if (digits == 0 || digits > kMaxDigits)
        return nullptr;
    decimal.m_Significand = static_cast<double>(static_cast<std::int64_t>(sum));
    return at;
}

#endif

// The first character behind the number, or nullptr when it has another shape, or none is there.
const char* ScanShortReal(const char* position, const char* end, double& value) {
    static constexpr double kPowers[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                         1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
    constexpr std::ptrdiff_t kMaxPower = 22; // 10^22 is the last that a double holds exactly
    constexpr std::ptrdiff_t kMaxExponent = 99;
    if (FLT_EVAL_METHOD != 0) // operations are not rounded to double
        return nullptr;
    const bool negative = *position == '-';
    if (negative || *position == '+')
        ++position;
    Decimal decimal;
    const char* at = TakeDecimal(position, end, decimal);
    if (at == nullptr)
        return nullptr;
    std::ptrdiff_t power = -decimal.m_Decimals;
    if (*at == 'e' || *at == 'E') {
        const char* digit = at + 1;
        const bool down = *digit == '-';
        if (down || *digit == '+')
            ++digit;
        std::ptrdiff_t exponent = 0;
        for (; digit < end && IsDigit(*digit) && exponent <= kMaxExponent; at = ++digit)
            exponent = exponent * 10 + (*digit - '0');
        power += down ? -exponent : exponent;
    }
    if (at > end || power < -kMaxPower || power > kMaxPower)
        return nullptr;
    const double significand = negative ? -decimal.m_Significand : decimal.m_Significand;
    value = power < 0 ? significand / kPowers[-power] : significand * kPowers[power];
    return at;
}

// Whether rounding a correctly rounded double to a float might not give the correctly rounded float: only on the
// middle between two floats, since elsewhere the double lies on the same side of each middle as the exact value. What
// ScanShortReal() finds is zero or at least 10^-22 and at most 10^37, so a normal float.
bool MayRoundTwice(double value) {
    constexpr int kDroppedBits = DBL_MANT_DIG - FLT_MANT_DIG;
    constexpr std::uint64_t kMiddle = std::uint64_t{1} << (kDroppedBits - 1);
    return (std::bit_cast<std::uint64_t>(value) & (2 * kMiddle - 1)) == kMiddle;
}

// Whether a number that no target value is near to is too large rather than too small. Such a number has a digit
// other than zero; its power of ten decides.
bool IsHuge(const char* position, const char* end) {
    constexpr long long kLimit = 1'000'000'000'000; // beyond the length of any text, and safe to add to one
    long long power = 0;                            // of ten, of the first digit that is not zero
    bool found = false;
    bool behindPoint = false;
    for (; position != end && (IsDigit(*position) || (*position == '.' && !behindPoint)); ++position) {
        if (*position == '.') {
            behindPoint = true;
            continue;
        }
        found = found || *position != '0';
        if (found && !behindPoint)
            ++power;
        if (!found && behindPoint)
            --power;
    }
    if (position != end && ToLower(*position) == 'e') {
        ++position;
        const bool negative = TakeSign(position, end);
        long long exponent = 0;
        for (; position != end && IsDigit(*position); ++position)
            exponent = exponent < kLimit ? exponent * 10 + (*position - '0') : exponent;
        power += negative ? -exponent : exponent;
    }
    return power > 0;
}

// Every shape, the digits by the standard library. Out of line, so that the short way needs no stack frame.
template <class Float> [[gnu::noinline]] const char* ScanReal(const char* position, const char* end, Float& value) {
    using Limits = std::numeric_limits<Float>;
    const bool negative = TakeSign(position, end);
    Float magnitude = 0;
    const char* behind = nullptr;
    if (position != end && (IsDigit(*position) || *position == '.')) {
        const auto [stop, error] = std::from_chars(position, end, magnitude);
        if (error == std::errc::invalid_argument)
            return nullptr;
        if (error == std::errc::result_out_of_range)
            magnitude = IsHuge(position, stop) ? Limits::infinity() : Float{0};
        behind = stop;
    } else if (const char* infinite = MatchWord(position, end, "inf")) {
        const char* const longer = MatchWord(infinite, end, "inity");
        magnitude = Limits::infinity();
        behind = longer != nullptr ? longer : infinite;
    } else if (const char* nan = MatchWord(position, end, "nan")) {
        magnitude = Limits::quiet_NaN();
        behind = SkipNanDetail(nan, end);
    } else {
        return nullptr;
    }
    value = negative ? -magnitude : magnitude;
    return behind;
}

} // namespace

const char* ScanIntOfAnyShape(const char* position, const char* end, std::int32_t& value) {
    std::uint32_t bits = 0;
    position = ScanDecimal(position, end, bits);
    if (position != nullptr)
        value = static_cast<std::int32_t>(bits);
    return position;
}

const char* ScanInt64(const char* position, const char* end, std::int64_t& value) {
    std::uint64_t bits = 0;
    position = ScanDecimal(position, end, bits);
    if (position != nullptr)
        value = static_cast<std::int64_t>(bits);
    return position;
}

const char* ScanHex(const char* position, const char* end, std::uint32_t& value) {
    const bool negative = TakeSign(position, end);
    if (position == end || HexDigit(*position) == kNoDigit)
        return nullptr;
    if (end - position >= 2 && position[0] == '0' && ToLower(position[1]) == 'x')
        position += 2;
    std::uint32_t sum = 0;
    for (; position != end && HexDigit(*position) != kNoDigit; ++position)
        sum = sum * 16 + HexDigit(*position);
    value = negative ? 0 - sum : sum;
    return position;
}

const char* ScanFloatOfAnyShape(const char* position, const char* end, float& value) {
    double exact = 0;
    const char* const behind = ScanShortReal(position, end, exact);
    if (behind == nullptr || MayRoundTwice(exact))
        return ScanReal(position, end, value);
    value = static_cast<float>(exact);
    return behind;
}

const char* ScanDouble(const char* position, const char* end, double& value) {
    return ScanReal(position, end, value);
}

} // namespace Corvid
