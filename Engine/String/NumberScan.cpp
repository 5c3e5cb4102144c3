#include "Engine/String/NumberScan.h"

#include <bit>
#include <cfloat>
#include <charconv>
#include <cstring>
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

// Appends a run of decimal digits to `sum` (modulo 2^64), eight at a time. It may run past `end`, into the padding.
const char* AppendDigits(const char* position, const char* end, std::uint64_t& sum) {
    constexpr std::uint64_t kBytes = 0x0101010101010101;
    constexpr int kStep = 8;
    constexpr std::uint64_t kPowers[] = {1, 10, 100, 1'000, 10'000, 100'000, 1'000'000, 10'000'000, 100'000'000};
    for (int count = kStep; count == kStep && position < end;) {
        std::uint64_t text = 0;
        std::memcpy(&text, position, sizeof(text));
        text ^= kBytes * '0';
        // A byte above 9 leaves one of its upper bits here; a carry out of one spoils only what is behind it.
        const std::uint64_t others = ((text + kBytes * 6) | text) & (kBytes * 0xF0);
        count = others != 0 ? std::countr_zero(others) / 8 : kStep;
        if (count == 0)
            break;
        text <<= 64 - 8 * count; // the first digit is the lowest byte: zeros move in before it
        text = (text * 10 + (text >> 8)) & 0x00FF00FF00FF00FF;
        text = (text * 100 + (text >> 16)) & 0x0000FFFF0000FFFF;
        text = (text * 10'000 + (text >> 32)) & 0x00000000FFFFFFFF;
        sum = sum * kPowers[count] + text;
        position += count;
    }
    return position;
}

// A number without a sign whose digits are an integer of at most 53 bits, times or over a power of ten that a double
// holds exactly: one correctly rounded operation on two exact values. nullptr for every other shape.
const char* ScanShortReal(const char* position, const char* end, double& value) {
    constexpr double kPowers[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                  1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
    constexpr int kMaxPower = 22;
    constexpr std::ptrdiff_t kMaxDigits = 19; // fit 64 bits
    if (std::endian::native != std::endian::little || FLT_EVAL_METHOD != 0)
        return nullptr;
    std::uint64_t sum = 0;
    const char* at = AppendDigits(position, end, sum);
    std::ptrdiff_t digits = at - position;
    std::ptrdiff_t power = 0;
    if (at < end && *at == '.') {
        const char* const fraction = at + 1;
        at = AppendDigits(fraction, end, sum);
        power = fraction - at;
        digits -= power;
    }
    if (digits == 0 || digits > kMaxDigits || sum > std::uint64_t{1} << DBL_MANT_DIG)
        return nullptr;
    if (at < end && (*at == 'e' || *at == 'E')) {
        const char* exponentAt = at + 1;
        const bool negative = TakeSign(exponentAt, end);
        std::ptrdiff_t exponent = 0;
        for (; exponentAt < end && IsDigit(*exponentAt) && exponent <= kMaxDigits + kMaxPower; ++exponentAt) {
            exponent = exponent * 10 + (*exponentAt - '0');
            at = exponentAt + 1;
        }
        power += negative ? -exponent : exponent;
    }
    if (at > end || power < -kMaxPower || power > kMaxPower)
        return nullptr;
    const double significand = static_cast<double>(static_cast<std::int64_t>(sum));
    value = power < 0 ? significand / kPowers[-power] : significand * kPowers[power];
    return at;
}

// Whether rounding a correctly rounded double to a float might not give the correctly rounded float: only on the
// middle between two floats, since elsewhere the double lies on the same side of each middle as the exact value. What
// ScanShortReal() finds is zero or at least 10^-22 and at most 2^53 * 10^22, so a normal float.
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

template <class Float> const char* ScanReal(const char* position, const char* end, Float& value) {
    using Limits = std::numeric_limits<Float>;
    const bool negative = TakeSign(position, end);
    double shortMagnitude = 0;
    if (const char* const behind = ScanShortReal(position, end, shortMagnitude);
        behind != nullptr && (sizeof(Float) == sizeof(double) || !MayRoundTwice(shortMagnitude))) {
        value = static_cast<Float>(negative ? -shortMagnitude : shortMagnitude);
        return behind;
    }
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
    return ScanReal(position, end, value);
}

const char* ScanDouble(const char* position, const char* end, double& value) {
    return ScanReal(position, end, value);
}

} // namespace Corvid
