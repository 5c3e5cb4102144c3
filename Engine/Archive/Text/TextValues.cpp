#include "Engine/Archive/Text/TextValues.h"

#include <bit>
#include <charconv>
#include <cmath>
#include <limits>
#include <type_traits>

#include "Engine/Archive/Text/TextLine.h"

namespace Corvid {

namespace {

// Whether the text of a number stands for a value of its type, rather than wrapping or overflowing to infinity.
template <class Integer> bool IsInRange(std::string_view digits, Integer) {
    if (digits.starts_with('+'))
        digits.remove_prefix(1);
    std::int64_t value = 0;
    if (std::from_chars(digits.data(), digits.data() + digits.size(), value).ec != std::errc())
        return false;
    if constexpr (std::is_same_v<Integer, std::int64_t>)
        return true;
    return value >= std::numeric_limits<std::int32_t>::min() && value <= std::numeric_limits<Integer>::max();
}

template <std::floating_point Float> bool IsInRange(std::string_view text, Float value) {
    return !std::isinf(value) || text.find_first_of("iI") != text.npos;
}

bool IsHexInRange(std::string_view digits) {
    if (digits.starts_with('-'))
        return false;
    const std::size_t first = digits.find_first_not_of("+0xX");
    return first == digits.npos || digits.size() - first <= kSafeHexDigits;
}

// Walks along a value text as a format is walked; stays where it is at the first thing that does not fit.
class ValueScanner {
public:
    explicit ValueScanner(std::string_view text) : m_Position(text.data()), m_End(text.data() + text.size()) {}

    bool Literal(char character) {
        SkipWhiteSpace();
        if (m_Position == m_End || *m_Position != character)
            return false;
        ++m_Position;
        return true;
    }

    // Behind any white space but with none inside.
    bool Mark(std::string_view mark) {
        SkipWhiteSpace();
        if (!std::string_view(m_Position, static_cast<std::size_t>(m_End - m_Position)).starts_with(mark))
            return false;
        m_Position += mark.size();
        return true;
    }

    // Gives the text of the number, empty when there is none.
    template <class Value> std::string_view Token(const char* (*scan)(const char*, const char*, Value&), Value& value) {
        SkipWhiteSpace();
        const char* const next = scan(m_Position, m_End, value);
        if (next == nullptr)
            return {};
        const std::string_view token(m_Position, static_cast<std::size_t>(next - m_Position));
        m_Position = next;
        return token;
    }

    template <class Value> bool Number(const char* (*scan)(const char*, const char*, Value&), Value& value) {
        const std::string_view token = Token(scan, value);
        if (token.empty())
            return false;
        m_IsInRange = m_IsInRange && IsInRange(token, value);
        return true;
    }

    // Nothing but white space is left, and every number was in its range.
    bool IsPlain() {
        SkipWhiteSpace();
        return m_IsInRange && m_Position == m_End;
    }

    // The decimals in front of exact bits do not count.
    void ForgetRange() { m_IsInRange = true; }

private:
    void SkipWhiteSpace() {
        while (m_Position != m_End && IsWhiteSpace(*m_Position))
            ++m_Position;
    }

    const char* m_Position;
    const char* m_End;
    bool m_IsInRange = true;
};

// Behind the bracket.
int ScanFloats(ValueScanner& scanner, float* values, int count) {
    for (int i = 0; i < count; ++i) {
        if (!scanner.Number(&ScanFloat, values[i]))
            return i;
    }
    return count;
}

// Behind the bracket.
int ScanInts(ValueScanner& scanner, std::int32_t* values, int count) {
    for (int i = 0; i < count; ++i) {
        if ((i > 0 && !scanner.Literal(',')) || !scanner.Number(&ScanInt, values[i]))
            return i;
    }
    return count;
}

template <class Float, class Bits>
ScannedValue ScanReal(std::string_view text, BitsRule rule, Float& value,
                      const char* (*scan)(const char*, const char*, Float&),
                      const char* (*scanBits)(const char*, const char*, Bits&)) {
    ValueScanner scanner(text);
    if (!scanner.Number(scan, value))
        return {};
    if (rule == BitsRule::Ignored || !scanner.Mark("Bits="))
        return {1, scanner.IsPlain() && rule != BitsRule::Required};
    Bits bits;
    scanner.ForgetRange();
    if (!scanner.Number(scanBits, bits))
        return {1, false};
    value = std::bit_cast<Float>(bits);
    return {rule == BitsRule::Required ? 2 : 1, scanner.IsPlain()};
}

} // namespace

ScannedValue ScanIntValue(std::string_view text, std::int32_t& value) {
    ValueScanner scanner(text);
    if (!scanner.Number(&ScanInt, value))
        return {};
    return {1, scanner.IsPlain()};
}

ScannedValue ScanUnsignedValue(std::string_view text, std::uint32_t& value) {
    ValueScanner scanner(text);
    std::int32_t bits;
    const std::string_view token = scanner.Token(&ScanInt, bits);
    if (token.empty())
        return {};
    value = static_cast<std::uint32_t>(bits);
    return {1, IsInRange(token, value) && scanner.IsPlain()};
}

ScannedValue ScanInt64Value(std::string_view text, std::int64_t& value) {
    ValueScanner scanner(text);
    if (!scanner.Number(&ScanInt64, value))
        return {};
    return {1, scanner.IsPlain()};
}

ScannedValue ScanHexValue(std::string_view text, std::uint32_t& value) {
    ValueScanner scanner(text);
    const std::string_view token = scanner.Token(&ScanHex, value);
    if (token.empty())
        return {};
    return {1, IsHexInRange(token) && scanner.IsPlain()};
}

ScannedValue ScanIntsValue(std::string_view text, std::int32_t* values, int count) {
    ValueScanner scanner(text);
    if (!scanner.Literal('['))
        return {};
    const int items = ScanInts(scanner, values, count);
    return {items, items == count && scanner.Literal(']') && scanner.IsPlain()};
}

ScannedValue ScanBoolValue(std::string_view text, bool& value) {
    const bool isTrue = text.find("TRUE") != text.npos;
    if (!isTrue && text.find("FALSE") == text.npos)
        return {};
    value = isTrue;
    ValueScanner scanner(text);
    return {1, scanner.Mark(isTrue ? "TRUE" : "FALSE") && scanner.IsPlain()};
}

ScannedValue ScanFloatValue(std::string_view text, BitsRule rule, float& value) {
    return ScanReal<float, std::int32_t>(text, rule, value, &ScanFloat, &ScanInt);
}

ScannedValue ScanDoubleValue(std::string_view text, BitsRule rule, double& value) {
    return ScanReal<double, std::int64_t>(text, rule, value, &ScanDouble, &ScanInt64);
}

ScannedValue ScanFloatsValue(std::string_view text, BitsRule rule, float* values, int count) {
    constexpr int kMaxCount = 4;
    ValueScanner scanner(text);
    if (!scanner.Literal('['))
        return {};
    const int items = ScanFloats(scanner, values, count);
    if (items < count)
        return {items, false};
    const bool isClosed = scanner.Literal(']');
    if (rule == BitsRule::Ignored || !isClosed || !scanner.Mark("Bits=["))
        return {items, isClosed && scanner.IsPlain() && rule != BitsRule::Required};
    std::int32_t bits[kMaxCount];
    scanner.ForgetRange();
    const int bitsItems = ScanInts(scanner, bits, count);
    for (int i = 0; i < bitsItems; ++i)
        values[i] = std::bit_cast<float>(bits[i]);
    const bool isPlain = bitsItems == count && scanner.Literal(']') && scanner.IsPlain();
    return {rule == BitsRule::Required ? items + bitsItems : items, isPlain};
}

} // namespace Corvid
