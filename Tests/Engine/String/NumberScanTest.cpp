#include "Engine/String/NumberScan.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <limits>
#include <random>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

namespace Corvid {
namespace {

constexpr int kNone = -1; // no number
constexpr int kAll = -2;  // the whole text
constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr float kDenormal = std::numeric_limits<float>::denorm_min();
constexpr float kMaximum = std::numeric_limits<float>::max();

template <class Value> struct Row {
    std::string_view m_Text;
    int m_Length; // of the number, or kNone or kAll
    Value m_Value;
};

// Scans the text where its end cuts it and `behind` follows; gives the number's length or kNone.
template <class Value, class Scan>
int LengthOf(Scan scan, std::string_view text, std::string_view behind, Value& value) {
    std::string buffer(text);
    while (buffer.size() < text.size() + kScanPadding)
        buffer += behind;
    buffer.resize(text.size() + kScanPadding);
    const char* const begin = buffer.data();
    const char* const stop = scan(begin, begin + text.size(), value);
    return stop != nullptr ? static_cast<int>(stop - begin) : kNone;
}

template <class Value> bool HasSameBits(Value a, Value b) {
    return std::memcmp(&a, &b, sizeof(Value)) == 0;
}

// What might be taken for more of the number if the end did not count.
constexpr std::string_view kBehind[] = {" ",    std::string_view("\0", 1), "7", ".5", "e5", "e", "-", "x1", "(x)",
                                        "inity"};

template <class Value, class Scan> void ExpectRow(Scan scan, const Row<Value>& row) {
    const int length = row.m_Length == kAll ? static_cast<int>(row.m_Text.size()) : row.m_Length;
    for (const std::string_view behind : kBehind) {
        Value value{77};
        EXPECT_EQ(LengthOf(scan, row.m_Text, behind, value), length) << row.m_Text << " then " << behind;
        EXPECT_TRUE(HasSameBits(value, row.m_Length == kNone ? Value{77} : row.m_Value))
            << row.m_Text << " then " << behind << ": " << value;
    }
}

template <class Value, class Scan> void ExpectNone(Scan scan, std::initializer_list<std::string_view> texts) {
    for (const std::string_view text : texts)
        ExpectRow(scan, Row<Value>{text, kNone, Value{}});
}

// Both ways through a scan that tries the common shape first; they must agree.
template <class Value, class First, class General>
const char* ScanBoth(First first, General general, const char* position, const char* end, Value& value) {
    Value other = value;
    const char* const stop = first(position, end, value);
    EXPECT_EQ(general(position, end, other), stop);
    EXPECT_TRUE(HasSameBits(other, value));
    return stop;
}
const auto kScanInt = [](const char* position, const char* end, std::int32_t& value) {
    return ScanBoth(ScanInt, ScanIntOfAnyShape, position, end, value);
};
const auto kScanFloat = [](const char* position, const char* end, float& value) {
    return ScanBoth(ScanFloat, ScanFloatOfAnyShape, position, end, value);
};

TEST(NumberScan, IntegersTakeSignAndDigitsAndWrap) {
    const Row<std::int32_t> kRows[] = {
        {"0", kAll, 0},
        {"7 8", 1, 7},
        {"+42\r\n", 3, 42},
        {"-123456", kAll, -123456},
        {"00000012", kAll, 12},
        {"000000000012", kAll, 12},
        {"12345678", kAll, 12345678},
        {"123456789", kAll, 123456789},
        {"1234567:", 7, 1234567},
        {"1234567/", 7, 1234567},
        {"99999\xC3\xA9", 5, 99999},
        {"1.5", 1, 1},
        {"2147483647", kAll, 2147483647},
        {"2147483648", kAll, std::numeric_limits<std::int32_t>::min()},
        {"-2147483649", kAll, 2147483647},
        {"-4294967297", kAll, -1},
        {"99999999999999999999", kAll, 1661992959},
    };
    for (const auto& row : kRows)
        ExpectRow(kScanInt, row);
    const Row<std::int64_t> kLongRows[] = {
        {"-9223372036854775808", kAll, std::numeric_limits<std::int64_t>::min()},
        {"9223372036854775808", kAll, std::numeric_limits<std::int64_t>::min()},
        {"18446744073709551617", kAll, 1},
        {"99999999999999999999", kAll, 7766279631452241919},
    };
    for (const auto& row : kLongRows)
        ExpectRow(ScanInt64, row);
    ExpectNone<std::int32_t>(kScanInt, {"", "-", "+-1", "- 1", " 1", ":1", "/1", "x"});
    ExpectNone<std::int64_t>(ScanInt64, {"", "-", "x"});
}

TEST(NumberScan, HexTakesPrefixAndSignAndWraps) {
    const Row<std::uint32_t> kRows[] = {
        {"ff8040", kAll, 0xFF8040},
        {"0xFFg", 4, 0xFF},
        {"-0X1", kAll, 0xFFFFFFFF},
        {"+a", kAll, 10},
        {"123456789", kAll, 0x23456789},
        {"0x", kAll, 0},
        {"0xz", 2, 0},
        {"0 x", 1, 0},
    };
    for (const auto& row : kRows)
        ExpectRow(ScanHex, row);
    ExpectNone<std::uint32_t>(ScanHex, {"", "-", "x1", "g", " 1"});
}

TEST(NumberScan, FloatsTakeEveryDecimalShape) {
    const Row<float> kRows[] = {
        // Six decimals, and what is nearly that.
        {"1.500000 ", 8, 1.5f},
        {"-12.345678\r\n", 10, -12.345678f},
        {"0.000000 ", 8, 0.0f},
        {"-0.000000 ", 9, -0.0f},
        {"+345.678901]", 11, 345.678901f},
        {".123456 ", 7, 0.123456f},
        {"-.123456 ", 8, -0.123456f},
        {"12345678.123456 ", 15, 12345678.123456f},
        {"-12345678.123456 ", 16, -12345678.123456f},
        {"123456789.123456 ", 16, 123456789.123456f},
        {"+12345678.1234567 ", 17, 12345678.1234567f},
        {"123456789012.345678 ", 19, 123456789012.345678f},
        {"1.234567e2 ", 10, 123.4567f},
        {"1.234567E-2 ", 11, 0.01234567f},
        {"1.234567e ", 8, 1.234567f},
        {"1.234567.8", 8, 1.234567f},
        {"1.234567-8", 8, 1.234567f},
        {"1.234567\xC3\xA9", 8, 1.234567f},
        {"1.23456:7 ", 7, 1.23456f},
        {"1.23/567 ", 4, 1.23f},
        {"1:2.345678 ", 1, 1.0f},
        {"1/2.345678 ", 1, 1.0f},
        {"1 2.345678 ", 1, 1.0f},
        {"1-2.345678 ", 1, 1.0f},
        {"1..234567 ", 2, 1.0f},
        // Other shapes.
        {"5", kAll, 5.0f},
        {"5.", kAll, 5.0f},
        {"-.5", kAll, -0.5f},
        {"-3.125e+02x", 10, -312.5f},
        {"1e+", 1, 1.0f},
        {"1e0000000000002", kAll, 100.0f},
        {"0x10", 1, 0.0f},
        {"0.000000000000000000000000000000000000000000125e42", kAll, 0.125f},
        {"12500000000000000000000000000000000000000000e-44", kAll, 0.125f},
        // Words.
        {"inf", kAll, kInfinity},
        {"-INFINITY!", 9, -kInfinity},
        {"+infinit", 4, kInfinity},
        {"nan", kAll, kNan},
        {"-nan", kAll, -kNan},
        {"NaN(aZ_09)1", 10, kNan},
        {"nan(a-b)", 3, kNan},
        {"", kNone, 0},
    };
    for (const auto& row : kRows)
        ExpectRow(kScanFloat, row);
    ExpectNone<float>(kScanFloat, {"", ".", "-", "+.", ".e5", "e5", "--1.000000 ", " 1.000000 ", "in", "-na", "+-inf"});
    ExpectNone<double>(ScanDouble, {"", "-.", "x"});
}

TEST(NumberScan, FloatsRoundOnceAndToEven) {
    const Row<float> kRows[] = {
        // On the middle between two floats, and beside it.
        {"262144.015625 ", 13, 262144.0f},
        {"262144.015626 ", 13, 262144.03125f},
        {"-262144.046874 ", 14, -262144.03125f},
        {"-262144.046875 ", 14, -262144.0625f},
        {"16777217.000000 ", 15, 16777216.0f},
        {"16777217", kAll, 16777216.0f},
        {"16777217.0000000000000000000000000001", kAll, 16777218.0f},
        // The nearest double is the middle, the text is not.
        {"562798410654068e-15", kAll, 0x1.20271ep-1f},
        {"-219363272190094e-14", kAll, -0x1.18c8f6p+1f},
        // The ends of the range.
        {"340282346638528859811704183484516925440", kAll, kMaximum},
        {"340282356779733661637539395458142568447", kAll, kMaximum},
        {"340282356779733661637539395458142568448", kAll, kInfinity},
        {"1e999999999999999999999", kAll, kInfinity},
        {"-0.0000000001e99999", kAll, -kInfinity},
        {"1.17549435e-38", kAll, std::numeric_limits<float>::min()},
        {"1.4e-45", kAll, kDenormal},
        {"-7.1e-46", kAll, -kDenormal},
        {"7.0e-46", kAll, 0.0f},
        {"-1e-60", kAll, -0.0f},
        {"-1000000000000e-99999", kAll, -0.0f},
        {"0e99999", kAll, 0.0f},
        {"-0.00000000000000000000000000000000000000000000000000000000000001e9", kAll, -0.0f},
        // The first powers of ten that a double does not hold.
        {"1e23", kAll, 1e23f},
        {"-1e-23", kAll, -1e-23f},
    };
    for (const auto& row : kRows)
        ExpectRow(kScanFloat, row);
    const Row<double> kDoubleRows[] = {
        {"-12.345678 ", 10, -12.345678},
        {"9007199254740993", kAll, 9007199254740992.0},
        {"1.7976931348623157e308", kAll, std::numeric_limits<double>::max()},
        {"-1.7976931348623159e308", kAll, -std::numeric_limits<double>::infinity()},
        {"-2e-324", kAll, -0.0},
        {"-nan", kAll, -std::numeric_limits<double>::quiet_NaN()},
    };
    for (const auto& row : kDoubleRows)
        ExpectRow(ScanDouble, row);
}

TEST(NumberScan, FloatsAgreeWithTheStandardLibrary) {
    std::mt19937_64 random(1);
    for (int i = 0; i < 100'000 && !HasFailure(); ++i) {
        const std::uint64_t bits = random();
        const double value = std::ldexp(static_cast<double>(bits >> 20), static_cast<int>(bits % 64) - 72);
        const auto format = (bits >> 6) % 4 == 0 ? std::chars_format::scientific : std::chars_format::fixed;
        const int decimals = (bits >> 8) % 2 == 0 ? 6 : static_cast<int>((bits >> 9) % 12);
        char text[400];
        const char* const end = std::to_chars(text, text + sizeof(text), value, format, decimals).ptr;
        float expected = 0;
        std::from_chars(text, end, expected);
        ExpectRow(kScanFloat, Row<float>{{text, static_cast<std::size_t>(end - text)}, kAll, expected});
    }
}

// A number never takes from behind the end, wherever it falls, and no text is read outside its buffer.
TEST(NumberScan, EveryCutStandsAlone) {
    for (const std::string_view text : {"-12.345678 ", "+1.25e-07", "infinity", "nan(12)", "123456789012345678901"}) {
        for (std::size_t length = 0; length <= text.size(); ++length) {
            float expected = 0;
            const int count = LengthOf(kScanFloat, text.substr(0, length), " ", expected);
            float value = 0;
            EXPECT_EQ(LengthOf(kScanFloat, text.substr(0, length), text.substr(length % text.size()), value), count);
            EXPECT_TRUE(HasSameBits(value, expected)) << text << " cut at " << length;
        }
    }
}

} // namespace
} // namespace Corvid
