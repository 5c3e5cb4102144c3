// The numbers, lines and characters of text, held against slow and simple ways to the same results: the C library for
// decimals, loops for the rest.

#include <bit>
#include <cctype>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

#include "Engine/Archive/Text/TextLineReader.h"
#include "Engine/Archive/Text/TextValues.h"
#include "Engine/String/NumberFormat.h"
#include "Engine/String/NumberScan.h"
#include "Engine/String/Unicode.h"
#include "Fuzz/Archives.h"

namespace Corvid::Fuzz {

namespace {

// Scans `text` twice, with different bytes behind it, and with what is behind it changing nothing. Returns how many
// characters the number takes, 0 for none.
template <class Value>
std::size_t Scan(const std::string& text, const char* (*scan)(const char*, const char*, Value&), Value& value) {
    const Value before = value;
    const std::string zeros = text + std::string(kScanPadding, '\0');
    const std::string digits = text + std::string(kScanPadding, '7');
    Value other = value;
    const char* const end = scan(zeros.data(), zeros.data() + text.size(), value);
    const char* const otherEnd = scan(digits.data(), digits.data() + text.size(), other);
    Require((end == nullptr) == (otherEnd == nullptr), "what stands behind a text never matters");
    Require(std::memcmp(&value, &other, sizeof value) == 0, "what stands behind a text never changes the value");
    if (end == nullptr) {
        Require(std::memcmp(&value, &before, sizeof value) == 0, "without a number nothing is stored");
        return 0;
    }
    Require(end - zeros.data() == otherEnd - digits.data(), "what stands behind a text is no part of the number");
    Require(end > zeros.data() && end <= zeros.data() + text.size(), "a number ends within its text");
    return static_cast<std::size_t>(end - zeros.data());
}

template <class Value> bool AreSame(Value a, Value b) {
    return std::isnan(a) ? std::isnan(b) && std::signbit(a) == std::signbit(b) : std::memcmp(&a, &b, sizeof a) == 0;
}

void CheckDecimals(const std::string& text) {
    const std::size_t first = !text.empty() && (text[0] == '-' || text[0] == '+') ? 1 : 0;
    if (text.size() > first && std::isspace(static_cast<unsigned char>(text[0])))
        return; // skipped by the C library, not by a scanner
    if (text.size() > first + 1 && text[first] == '0' && (text[first + 1] | 0x20) == 'x')
        return; // decimal forms only
    float number = 0.5f, sameNumber = 0.5f;
    double wide = 0.5;
    const std::size_t taken = Scan(text, &ScanFloat, number);
    Require(Scan(text, &ScanFloatOfAnyShape, sameNumber) == taken && AreSame(number, sameNumber),
            "the common shapes of a float are read like any other");
    const std::size_t wideTaken = Scan(text, &ScanDouble, wide);
    char* end;
    const float expected = std::strtof(text.c_str(), &end);
    Require(taken == static_cast<std::size_t>(end - text.c_str()), "a float ends where it ends for the C library");
    Require(taken == 0 || AreSame(number, expected), "a float is correctly rounded");
    const double wideExpected = std::strtod(text.c_str(), &end);
    Require(wideTaken == static_cast<std::size_t>(end - text.c_str()), "a double ends where it ends for the C library");
    Require(wideTaken == 0 || AreSame(wide, wideExpected), "a double is correctly rounded");
}

void CheckIntegers(const std::string& text) {
    std::size_t i = !text.empty() && (text[0] == '-' || text[0] == '+') ? 1 : 0;
    const std::size_t first = i;
    std::uint64_t sum = 0;
    for (; i < text.size() && text[i] >= '0' && text[i] <= '9'; ++i)
        sum = sum * 10 + static_cast<std::uint64_t>(text[i] - '0');
    const std::size_t expected = i > first ? i : 0;
    if (text[0] == '-')
        sum = 0 - sum;

    std::int32_t number = 0, sameNumber = 0;
    std::int64_t wide = 0;
    Require(Scan(text, &ScanInt, number) == expected, "an integer takes its sign and digits");
    Require(Scan(text, &ScanIntOfAnyShape, sameNumber) == expected && number == sameNumber,
            "the common shapes of an integer are read like any other");
    Require(Scan(text, &ScanInt64, wide) == expected, "a wide integer takes its sign and digits");
    if (expected == 0)
        return;
    Require(static_cast<std::uint32_t>(number) == static_cast<std::uint32_t>(sum), "an integer wraps");
    Require(static_cast<std::uint64_t>(wide) == sum, "a wide integer wraps");
}

void CheckHex(const std::string& text) {
    std::uint32_t number = 0;
    const std::size_t taken = Scan(text, &ScanHex, number);
    if (taken == 0)
        return;
    const std::string digits = text.substr(0, taken);
    if (digits.size() > 16 || (digits.back() | 0x20) == 'x')
        return; // the C library does not wrap, nor take a bare prefix
    const auto expected = static_cast<std::uint32_t>(std::strtoull(digits.c_str(), nullptr, 16));
    Require(number == expected, "a hexadecimal number is read whole");
}

// Every value text, for what it may touch.
void ScanValues(const std::string& padded, std::size_t size) {
    const std::string_view text(padded.data(), size);
    float floats[4] = {};
    std::int32_t ints[4] = {};
    double wide = 0;
    std::int64_t wideInt = 0;
    std::uint32_t hex = 0;
    std::uint32_t word = 0;
    bool flag = false;
    ScanIntValue(text, ints[0]);
    ScanUnsignedValue(text, word);
    ScanInt64Value(text, wideInt);
    ScanHexValue(text, hex);
    ScanBoolValue(text, flag);
    ScanIntsValue(text, ints, 2);
    ScanIntsValue(text, ints, 4);
    for (const BitsRule rule : {BitsRule::Ignored, BitsRule::Taken, BitsRule::Required}) {
        ScanFloatValue(text, rule, floats[0]);
        ScanDoubleValue(text, rule, wide);
        ScanFloatsValue(text, rule, floats, 3);
        ScanFloatsValue(text, rule, floats, 4);
    }
}

template <class Value, std::size_t Room>
void CheckFormat(char* (*format)(char*, Value), Value value, const char (&cFormat)[Room], std::size_t longest) {
    char text[512], expected[512];
    std::memset(text, '#', sizeof text);
    char* const end = format(text, value);
    const int length = std::snprintf(expected, sizeof expected, cFormat, value);
    Require(std::string_view(text, end) == std::string_view(expected, static_cast<std::size_t>(length)),
            "a number is written as the C library does");
    Require(static_cast<std::size_t>(length) <= longest, "a number has its room");
    for (const char* byte = text + longest + kFormatSlack; byte != text + sizeof text; ++byte)
        Require(*byte == '#', "nothing is written behind the slack");
}

void CheckFormats(std::string_view bytes) {
    char raw[sizeof(double)] = {};
    std::memcpy(raw, bytes.data(), std::min(bytes.size(), sizeof raw));
    float number;
    double wide;
    std::int32_t integer;
    long long wideInteger;
    std::memcpy(&number, raw, sizeof number);
    std::memcpy(&wide, raw, sizeof wide);
    std::memcpy(&integer, raw, sizeof integer);
    std::memcpy(&wideInteger, raw, sizeof wideInteger);
    CheckFormat<float>(&FormatFloat, number, "%f", kMaxFloatText);
    CheckFormat<float>(&FormatFloatShort, number, "%.2f", kMaxFloatText);
    CheckFormat<double>(&FormatDouble, wide, "%f", kMaxDoubleText);
    CheckFormat<double>(&FormatDoubleShort, wide, "%.2f", kMaxDoubleText);
    CheckFormat<std::int32_t>(&FormatInt, integer, "%d", kMaxIntText);
    CheckFormat<std::uint32_t>(&FormatHex, static_cast<std::uint32_t>(integer), "%x", kMaxHexText);
    char text[kMaxInt64Text + kFormatSlack];
    Require(std::string_view(text, FormatInt64(text, wideInteger)) == std::to_string(wideInteger),
            "a wide integer is written as the C library does");
}

std::u16string WithoutCarriageReturns(std::u16string units) {
    for (std::size_t at = 0; (at = units.find(u"\r\n", at)) != units.npos;)
        units.erase(at, 1);
    return units;
}

// The pieces of a line buffer: up to and with a line end, or as much as it takes; each cut at a NUL.
void CheckLines(std::string_view bytes) {
    const std::u16string units = WithoutCarriageReturns(ToUtf16(bytes));
    InputStream input{std::string(bytes)};
    TextLineReader reader(input);
    std::size_t start = 0;
    std::uint64_t lineCount = 0;
    while (!reader.IsAtEnd()) {
        Require(start < units.size(), "lines end with their input");
        const std::size_t lineEnd = units.find(u'\n', start);
        std::size_t length = lineEnd == units.npos ? units.size() - start : lineEnd + 1 - start;
        length = std::min(length, static_cast<std::size_t>(TextLineReader::kMaxLineUnits));
        std::u16string expected = units.substr(start, length);
        lineCount += expected.back() == u'\n' ? 1 : 0;
        expected = expected.substr(0, expected.find(u'\0'));

        const TextLine line = reader.Peek();
        std::u16string got(line.m_FirstUnit != 0 ? 1 : 0, line.m_FirstUnit);
        got += WithoutCarriageReturns(ToUtf16(line.m_Text));
        if (line.m_LastUnit != 0)
            got.push_back(line.m_LastUnit);
        Require(got == expected, "a line is what the line buffer would hold");
        reader.Take();
        start += length;
        Require(reader.GetLinesTaken() == lineCount, "whole lines are counted");
    }
    Require(start == units.size(), "no input is left behind the lines");
}

void CheckCharacters(std::string_view bytes) {
    const std::u16string units = ToUtf16(bytes);
    const std::string text = ToUtf8(units);
    Require(ToUtf16(text) == units, "repaired text keeps its characters");

    std::u16string raw(bytes.size() / 2, u'\0');
    std::memcpy(raw.data(), bytes.data(), 2 * raw.size());
    const std::string half = bytes.size() % 2 != 0 ? "\xEF\xBF\xBD" : "";
    InputStream input{std::string(bytes)};
    input.ConvertFromUtf16();
    Require(std::string_view(input.GetPosition(), input.GetAvailable()) == ToUtf8(raw) + half,
            "UTF-16 input is what its units say");
}

} // namespace

} // namespace Corvid::Fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace Corvid::Fuzz;
    const std::string text(reinterpret_cast<const char*>(data), size);
    CheckDecimals(text.substr(0, text.find('\0')));
    CheckIntegers(text);
    CheckHex(text);
    ScanValues(text + std::string(Corvid::kScanPadding, '\0'), size);
    CheckFormats(text);
    CheckLines(text);
    CheckCharacters(text);
    return 0;
}
