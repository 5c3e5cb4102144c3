#include "Engine/Archive/TextValues.h"

#include <bit>

namespace Corvid {

namespace {

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

    template <class Value> bool Number(const char* (*scan)(const char*, const char*, Value&), Value& value) {
        SkipWhiteSpace();
        const char* const next = scan(m_Position, m_End, value);
        if (next == nullptr)
            return false;
        m_Position = next;
        return true;
    }

private:
    void SkipWhiteSpace() {
        while (m_Position != m_End && IsWhiteSpace(*m_Position))
            ++m_Position;
    }

    const char* m_Position;
    const char* m_End;
};

int ScanFloats(ValueScanner& scanner, float* values, int count) {
    if (!scanner.Literal('['))
        return 0;
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

} // namespace

int ScanIntValue(std::string_view text, std::int32_t& value) {
    return ValueScanner(text).Number(&ScanInt, value) ? 1 : 0;
}

int ScanInt64Value(std::string_view text, std::int64_t& value) {
    return ValueScanner(text).Number(&ScanInt64, value) ? 1 : 0;
}

int ScanHexValue(std::string_view text, std::uint32_t& value) {
    return ValueScanner(text).Number(&ScanHex, value) ? 1 : 0;
}

int ScanFloatValue(std::string_view text, float& value) {
    return ValueScanner(text).Number(&ScanFloat, value) ? 1 : 0;
}

int ScanDoubleValue(std::string_view text, double& value) {
    return ValueScanner(text).Number(&ScanDouble, value) ? 1 : 0;
}

int ScanFloatsValue(std::string_view text, float* values, int count) {
    ValueScanner scanner(text);
    return ScanFloats(scanner, values, count);
}

int ScanIntsValue(std::string_view text, std::int32_t* values, int count) {
    ValueScanner scanner(text);
    return scanner.Literal('[') ? ScanInts(scanner, values, count) : 0;
}

int ScanFloatBits(std::string_view text, float& value) {
    ValueScanner scanner(text);
    float shown;
    std::int32_t bits;
    if (!scanner.Number(&ScanFloat, shown))
        return 0;
    if (!scanner.Mark("Bits=") || !scanner.Number(&ScanInt, bits))
        return 1;
    value = std::bit_cast<float>(bits);
    return 2;
}

int ScanDoubleBits(std::string_view text, double& value) {
    ValueScanner scanner(text);
    double shown;
    std::int64_t bits;
    if (!scanner.Number(&ScanDouble, shown))
        return 0;
    if (!scanner.Mark("Bits=") || !scanner.Number(&ScanInt64, bits))
        return 1;
    value = std::bit_cast<double>(bits);
    return 2;
}

int ScanFloatsBits(std::string_view text, float* values, int count) {
    constexpr int kMaxCount = 4;
    ValueScanner scanner(text);
    float shown[kMaxCount];
    std::int32_t bits[kMaxCount];
    const int shownCount = ScanFloats(scanner, shown, count);
    if (shownCount < count || !scanner.Literal(']') || !scanner.Mark("Bits=["))
        return shownCount;
    const int bitsCount = ScanInts(scanner, bits, count);
    for (int i = 0; i < bitsCount; ++i)
        values[i] = std::bit_cast<float>(bits[i]);
    return count + bitsCount;
}

} // namespace Corvid
