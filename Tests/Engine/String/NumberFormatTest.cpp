#include "Engine/String/NumberFormatExact.h"

#include <bit>
#include <charconv>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

namespace Corvid {
namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

template <class Value> struct Row {
    Value m_Value;
    std::string_view m_Text;
};

// The text that `format` makes; it may scribble behind it, but not further than announced.
template <class Value, class Format> std::string TextOf(Format format, Value value) {
    constexpr char kUntouched = '\x55';
    std::string buffer(2 * (kMaxDoubleText + kFormatSlack), kUntouched);
    const auto length = static_cast<std::size_t>(format(buffer.data(), value) - buffer.data());
    EXPECT_EQ(buffer.find_first_not_of(kUntouched, length + kFormatSlack), std::string::npos) << "scribbled too far";
    return buffer.substr(0, length);
}

template <class Value, std::size_t count, class Format>
void ExpectRows(Format format, const Row<Value> (&rows)[count]) {
    for (const auto& row : rows)
        EXPECT_EQ(TextOf(format, row.m_Value), row.m_Text);
}

// Both ways through a function that tries the common range first; they must agree.
const auto kFormatInt = [](char* out, std::int32_t value) {
    char other[kMaxIntText + kFormatSlack];
    char* const end = FormatInt(out, value);
    EXPECT_EQ(std::string_view(other, FormatIntOfAnySize(other, value)), std::string_view(out, end));
    return end;
};
const auto kFormatFloat = [](char* out, float value) {
    char other[kMaxFloatText + kFormatSlack];
    char* const end = FormatFloat(out, value);
    EXPECT_EQ(std::string_view(other, FormatFloatOfAnySize(other, value)), std::string_view(out, end));
    return end;
};

TEST(NumberFormat, IntegersHaveNoLeadingZeros) {
    for (std::int64_t size = 1; size <= 10'000'000'000; size *= 10) {
        for (const std::int64_t value : {size - 1, size, size + 1, 5 * size, -size}) {
            const auto shortValue = static_cast<std::int32_t>(value);
            EXPECT_EQ(TextOf(kFormatInt, shortValue), std::to_string(shortValue));
            EXPECT_EQ(TextOf(FormatInt64, value), std::to_string(value));
        }
    }
    ExpectRows(kFormatInt, {Row<std::int32_t>{2147483647, "2147483647"}, {-2147483647 - 1, "-2147483648"}});
    ExpectRows(FormatInt64, {Row<std::int64_t>{std::numeric_limits<std::int64_t>::min(), "-9223372036854775808"}});
    ExpectRows(FormatHex, {Row<std::uint32_t>{0, "0"}, {0xFF8040, "ff8040"}, {0xFFFFFFFF, "ffffffff"}});
}

TEST(NumberFormat, FloatsAreExactAndRoundHalfToEven) {
    const Row<float> kRows[] = {
        {0.0f, "0.000000"},
        {-0.0f, "-0.000000"},
        {-12.345678f, "-12.345678"},
        {9.9999999f, "10.000000"},
        {0.99999994f, "1.000000"},
        {999.99994f, "999.999939"},
        {1000.0f, "1000.000000"},
        {-1048576.125f, "-1048576.125000"},
        {8388608.0f, "8388608.000000"},
        // Halves of the sixth decimal, both ways.
        {0x1p-7f, "0.007812"},
        {0x3p-7f, "0.023438"},
        {-0x5p-7f, "-0.039062"},
        {1000.0f + 0x3p-7f, "1000.023438"},
        // Next to half a millionth.
        {5.0000004e-7f, "0.000001"},
        {4.9999999e-7f, "0.000000"},
        {-std::numeric_limits<float>::denorm_min(), "-0.000000"},
        // Every digit of large values.
        {1e10f, "10000000000.000000"},
        {-0x1p62f, "-4611686018427387904.000000"},
        {std::numeric_limits<float>::lowest(), "-340282346638528859811704183484516925440.000000"},
        {kInfinity, "inf"},
        {-kInfinity, "-inf"},
        {kNan, "nan"},
        {-kNan, "-nan"},
    };
    ExpectRows(kFormatFloat, kRows);
    EXPECT_EQ(TextOf(FormatFloat, std::numeric_limits<float>::lowest()).size(), kMaxFloatText);
}

TEST(NumberFormat, ShortFloatsAndDoublesAreExactToo) {
    ExpectRows(FormatFloatShort, {Row<float>{0.0f, "0.00"},
                                  {-0.125f, "-0.12"},
                                  {0.375f, "0.38"},
                                  {0.999f, "1.00"},
                                  {1e10f, "10000000000.00"},
                                  {kNan, "nan"},
                                  {-kInfinity, "-inf"}});
    ExpectRows(FormatDoubleShort,
               {Row<double>{1.005, "1.00"}, {-0.015625, "-0.02"}, {0x1p80, "1208925819614629174706176.00"}});
    ExpectRows(FormatDouble, {Row<double>{0.1, "0.100000"},
                              {0x1p-7 + 0x1p-50, "0.007813"},
                              {0x1p-7 - 0x1p-55, "0.007812"},
                              {9007199254740993.0, "9007199254740992.000000"},
                              {4503599627370495.5, "4503599627370495.500000"},
                              {5e-324, "0.000000"}});
    const std::string longest = TextOf(FormatDouble, std::numeric_limits<double>::lowest());
    EXPECT_EQ(longest.size(), kMaxDoubleText);
    EXPECT_EQ(longest.substr(0, 21), "-17976931348623157081");
}

TEST(NumberFormat, ExactNumbersHaveSixDecimalsOrTheShortest) {
    const Row<float> kRows[] = {
        {0.0f, "0.000000"},
        {-0.0f, "-0.000000"},
        {0.00001f, "0.000010"},
        {-0.1f, "-0.100000"},
        {15.999999f, "15.999999"},
        {1e10f, "10000000000.000000"},
        {-kInfinity, "-inf"},
        {-kNan, "-nan"},
        // Seven decimals and more, in each way of finding them.
        {0x1.fffffep+3f, "15.999999"},
        {-3.3333333f, "-3.3333333"},
        {0.57735026f, "0.57735026"},
        {0.99999994f, "0.99999994"},
        {0.5000001f, "0.5000001"},
        {0.015625002f, "0.015625002"},
        {0.0625001f, "0.0625001"},
        {0.0156249f, "0.0156249"},
        {0.00012345678f, "0.00012345678"},
        {0.00012345f, "0.00012345"},
        // With an exponent where that is shorter.
        {0.0000123f, "1.23e-05"},
        {1e-7f, "1.0e-07"},
        {-1.5e-30f, "-1.5e-30"},
        {std::numeric_limits<float>::min(), "1.1754944e-38"},
        {std::numeric_limits<float>::denorm_min(), "1.0e-45"},
    };
    ExpectRows(FormatFloatExact, kRows);
    ExpectRows(FormatDoubleExact, {Row<double>{0.1, "0.100000"},
                                   {-0.0, "-0.000000"},
                                   {1.0 / 3.0, "0.3333333333333333"},
                                   {123456.7890123456, "123456.7890123456"},
                                   {0x1p80, "1208925819614629174706176.000000"},
                                   {0.00012345, "0.00012345"},
                                   {0.00001234, "1.234e-05"},
                                   {5e-324, "5.0e-324"},
                                   {-std::numeric_limits<double>::infinity(), "-inf"}});
    EXPECT_EQ(TextOf(FormatDoubleExact, std::numeric_limits<double>::lowest()).size(), kMaxDoubleText);
}

// A sample of all bit patterns, against the library's exact conversion.
TEST(NumberFormat, AgreesWithTheStandardLibrary) {
    constexpr std::uint64_t kStride = 104'729; // prime
    for (std::uint64_t bits = 0; bits < 0x7F800000 && !HasFailure(); bits += kStride) {
        const auto value = std::bit_cast<float>(static_cast<std::uint32_t>(bits));
        const double wide = std::bit_cast<double>(bits * 0x1'0000'0001);
        char text[kMaxDoubleText];
        const auto exact = [&](double number, int decimals) {
            return std::string_view(
                text, std::to_chars(text, text + sizeof(text), number, std::chars_format::fixed, decimals).ptr);
        };
        EXPECT_EQ(TextOf(kFormatFloat, value), exact(value, 6));
        EXPECT_EQ(TextOf(FormatFloatShort, value), exact(value, 2));
        EXPECT_EQ(TextOf(FormatDouble, wide), exact(wide, 6));

        const std::string exactValue = TextOf(FormatFloatExact, value), exactWide = TextOf(FormatDoubleExact, wide);
        float valueBack = -1;
        double wideBack = -1;
        std::from_chars(exactValue.data(), exactValue.data() + exactValue.size(), valueBack);
        std::from_chars(exactWide.data(), exactWide.data() + exactWide.size(), wideBack);
        EXPECT_TRUE(valueBack == value && wideBack == wide) << exactValue << ' ' << exactWide;
    }
}

} // namespace
} // namespace Corvid
