#include "Engine/String/NumberScan.h"

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
