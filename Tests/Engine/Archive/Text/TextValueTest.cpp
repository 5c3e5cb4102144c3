#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cstdio>
#include <string>
#include <string_view>

#include "Tests/Engine/Archive/TextArchiveFixture.h"

namespace Corvid {
namespace {

class Shown {
public:
    template <class Number> static std::string As(const char* format, Number number) {
        char text[400];
        std::snprintf(text, sizeof text, format, number);
        return text;
    }
    static std::string Of(bool value) { return value ? "TRUE" : "FALSE"; }
    static std::string Of(std::int32_t value) { return std::to_string(value); }
    static std::string Of(std::uint32_t value) { return std::to_string(value); }
    static std::string Of(std::int64_t value) { return std::to_string(value); }
    static std::string Of(float value) { return As("%.9g", static_cast<double>(value)); }
    static std::string Of(double value) { return As("%.17g", value); }
    template <class First, class... More> static std::string Of(First first, More... more) {
        return Of(first) + ' ' + Of(more...);
    }
    static std::string Of(const IntPair& value) { return Of(value.first, value.second); }
    static std::string Of(const IntRect& value) { return Of(value.x, value.y, value.width, value.height); }
    static std::string Of(const Vector3& value) { return Of(value.x, value.y, value.z); }
    static std::string Of(const Vector4& value) { return Of(value.x, value.y, value.z, value.w); }
    static std::string Of(const Color& value) { return Of(value.red, value.green, value.blue, value.alpha); }
    static std::string Of(const Matrix33& value) { return Rows(value, 3); }
    static std::string Of(const Matrix44& value) { return Rows(value, 4); }

private:
    static std::string Rows(const auto& matrix, int count) {
        std::string text;
        for (int i = 0; i < count; ++i)
            text += (i > 0 ? " / " : "") + Of(matrix.GetRow(i));
        return text;
    }
};

class EmptyRecord final : public Record<EmptyRecord> {
public:
    static void Fields(auto&, auto&) {}
};

class TextValueTest : public TextArchiveFixture {
protected:
    // The rows: what stands behind the label, " -> ", the value then, and " !" if `condition` failed; " | " parts them.
    template <class Value>
    void ExpectValues(void (Archive::*operation)(Label, Value&), const Value& before, const char* condition,
                      std::string_view rows) {
        while (!rows.empty()) {
            const std::string_view row = rows.substr(0, rows.find(" | "));
            rows.remove_prefix(std::min(row.size() + 3, rows.size()));
            const std::size_t arrow = row.find(" -> ");
            const bool isFaulty = row.ends_with(" !");
            const std::string_view expected = row.substr(arrow + 4, row.size() - arrow - (isFaulty ? 6 : 4));

            SCOPED_TRACE(row);
            std::string shown;
            const std::string line = "Value " + std::string(row.substr(0, arrow)) + "\r\n";
            const auto read = [&](Archive& archive) { shown = Shown::Of(ReadOver(before, archive, operation)); };
            EXPECT_EQ(m_IsBitsMode ? ReadBits(line, read) : Read(line, read), isFaulty ? Failed(condition) : "");
            EXPECT_EQ(shown, expected);
        }
    }

    // Whether a line "Value <text>" is noted as more than a value, for all texts of `rows`, in each way of reading.
    template <class Read> void ExpectDeviation(Read read, bool isExpected, std::string_view rows) {
        while (!rows.empty()) {
            const std::string_view row = rows.substr(0, rows.find(" | "));
            rows.remove_prefix(std::min(row.size() + 3, rows.size()));
            for (const bool isByLine : {false, true}) {
                TextArchiveFixture::Read("Value " + std::string(row) + "\r\n", [&](TextFileArchive& archive) {
                    archive.EnableChecksum(false);
                    if (isByLine)
                        archive.ReadByLineOnly();
                    if (m_IsBitsMode)
                        archive.TakeBits();
                    read(archive);
                    EXPECT_EQ(archive.HasDeviated(), isExpected) << row << (isByLine ? ", by line" : "");
                });
            }
        }
    }
    template <class Value>
    void ExpectDeviations(void (Archive::*operation)(Label, Value&), std::string_view plain,
                          std::string_view deviating) {
        const auto read = [operation](Archive& archive) { ReadOver(Value{}, archive, operation); };
        ExpectDeviation(read, false, plain);
        ExpectDeviation(read, true, deviating);
    }

    bool m_IsBitsMode = false;
};

TEST_F(TextValueTest, NumbersAreReadAsFormattedInput) {
    ExpectValues<std::int32_t>(
        &Archive::ReadInt, 7, "result == 1",
        "12 -> 12 | -12 -> -12 | +012 -> 12 | \t\v\f 12abc -> 12 | 12.9 -> 12 | 0x10 -> 0 | 4294967297 -> 1 | "
        "3000000000 -> -1294967296 | -2147483649 -> 2147483647 | 99999999999999999999 -> 1661992959 | "
        "x12 -> 7 ! | - 12 -> 7 ! | +-12 -> 7 ! |  -> 7 ! | \xEF\xBC\x91 -> 7 !"); // the last: a full-width digit
    ExpectValues<std::uint32_t>(&Archive::ReadInt, 7, "result == 1",
                                "3000000000 -> 3000000000 | -1294967296 -> 3000000000 | -1 -> 4294967295 | x -> 7 !");
    ExpectValues<std::int64_t>(
        &Archive::ReadInt64, 7, "result == 1",
        "-9223372036854775808 -> -9223372036854775808 | 9223372036854775808 -> -9223372036854775808 | "
        "18446744073709551617x -> 1 | 99999999999999999999 -> 7766279631452241919 | x -> 7 !");
    ExpectValues<float>(
        &Archive::ReadFloat, 7, "result == 1",
        "1.5 -> 1.5 | +1.5x -> 1.5 | .5 -> 0.5 | -5. -> -5 | -0 -> -0 | -0.000000 -> -0 | 1e3 -> 1000 | "
        "1.E+03 -> 1000 | 1e400 -> inf | -1e400 -> -inf | -1e-400 -> -0 | 1e-45 -> 1.40129846e-45 | "
        "16777217 -> 16777216 | 16777217.00000000000000001 -> 16777218 | " // which a double in between would lose
        "340282346638528859811704183484516925440.000000 -> 3.40282347e+38 | -inf -> -inf | INFINITY -> inf | "
        "nan -> nan | 1,5 -> 1 | 0x10 -> 0 | . -> 7 ! | e5 -> 7 ! | --1 -> 7 ! |  -> 7 !");
    ExpectValues<double>(&Archive::ReadDouble, 7, "result == 1",
                         "0.1 -> 0.10000000000000001 | 1e308 -> 1e+308 | 1e309 -> inf | "
                         "-4.9e-324 -> -4.9406564584124654e-324 | x -> 7 !");
}

TEST_F(TextValueTest, BoolsAndColorsAreAllOrNothing) {
    const char* const rows = "TRUE -> TRUE | FALSE -> FALSE | noFALSE! -> FALSE | FALSE, no: TRUE -> TRUE";
    ExpectValues(&Archive::ReadBool, true, "false", rows);
    ExpectValues(&Archive::ReadBool, false, "false", rows);
    ExpectValues(&Archive::ReadBool, true, "false", "FALS -> TRUE ! | false -> TRUE ! | 0 -> TRUE ! |  -> TRUE !");
    ExpectValues<Color>(&Archive::ReadColor, {7, 7, 7, 7}, "result == 1",
                        "ff0000ff -> 0 0 1 1 | 0xFF00ff00 -> 0 1 0 1 | 1ff0000ff -> 0 0 1 1 | -1 -> 1 1 1 1 | "
                        "80402010 -> 0.250980407 0.125490203 0.0627451017 0.501960814 | 0 -> 0 0 0 0 | "
                        "fffgg -> 0 0.0588235334 1 0 | #ff -> 7 7 7 7 ! |  -> 7 7 7 7 !");
}

TEST_F(TextValueTest, ComponentsInFrontOfAFaultAreStored) {
    ExpectValues<IntPair>(&Archive::ReadIntPair, {7, 7}, "result == 2",
                          "[ 1 , -2 ] -> 1 -2 | [1,2 -> 1 2 | [ 1 \t,\v 4294967295 , 3 ] -> 1 -1 | [ 1 2 ] -> 1 7 ! | "
                          "[ 1 , x ] -> 1 7 ! | [ 1 ; 2 ] -> 1 7 ! | 1 , 2 -> 7 7 ! |  -> 7 7 !");
    ExpectValues<IntRect>(&Archive::ReadIntRect, {7, 7, 7, 7}, "result == 4",
                          "[ 1 , 2 , 3 , 4 ] -> 1 2 3 4 | [ 1 , 2 , 3 ] -> 1 2 3 7 ! | [ 1 , , 3 , 4 ] -> 1 7 7 7 !");
    ExpectValues<Vector3>(
        &Archive::ReadVector3, {7, 7, 7}, "result == 3",
        "[ 1.000000 -2.500000 3.000000 ] -> 1 -2.5 3 | [1 .5 1e2 -> 1 0.5 100 | [\t1\v2\f3 4 ] -> 1 2 3 | "
        "[ 1-2+3 ] -> 1 -2 3 | [ nan -inf 1.5.5 ] -> nan -inf 1.5 | [ 1 2 ] -> 1 2 7 ! | [ 1 , 2 , 3 ] -> 1 7 7 ! | "
        "( 1 2 3 ) -> 7 7 7 ! | 1 2 3 -> 7 7 7 ! |  -> 7 7 7 !");
    ExpectValues<Vector4>(&Archive::ReadVector4, {7, 7, 7, 7}, "result == 4",
                          "[ 1 2 3 4 ] -> 1 2 3 4 | [ 1 2 3 ] -> 1 2 3 7 !");
    ExpectValues<Matrix33>(&Archive::ReadMatrix33, {{7, 7, 7}, {7, 7, 7}, {7, 7, 7}}, "result == 3",
                           "\n [ 1 2 3 ]\n\t\t[4 5 6]\nValue -> 1 2 3 / 4 5 6 / 7 7 7 ! | "
                           "junk\n[ 1 2 3 ]\n [ 4 x 6 ]\n[ 7 8 9 ] -> 1 2 3 / 4 7 7 / 7 8 9 !");
    ExpectValues<Matrix44>(&Archive::ReadMatrix44, {}, "result == 4",
                           "\n[ 1 2 3 4 ]\n[ 5 6 7 8 ]\n[ 9 10 11 ]\n[ 13 14 15 16 ] -> "
                           "1 2 3 4 / 5 6 7 8 / 9 10 11 0 / 13 14 15 16 !");
}

TEST_F(TextValueTest, BitsAreTakenInPlaceOfTheDecimals) {
    m_IsBitsMode = true;
    ExpectValues<float>(
        &Archive::ReadFloat, 7, "result == 2",
        "0.33 Bits=1051372203 -> 0.333333343 | 9.99 Bits=-2147483648 -> -0 | 0 Bits=4286578688 -> -inf | "
        "1Bits=\t1 -> 1.40129846e-45 | "
        "0.33 -> 0.330000013 ! | 0.33 Bits= -> 0.330000013 ! | 0.33 Bits =1 -> 0.330000013 ! | "
        "0.33 bits=1 -> 0.330000013 ! | Bits=1 -> 7 !");
    ExpectValues<double>(&Archive::ReadDouble, 7, "result == 2",
                         "0.10 Bits=4591870180066957722 -> 0.10000000000000001 | 0.10 -> 0.10000000000000001 !");
    ExpectValues<Vector3>(
        &Archive::ReadVector3, {7, 7, 7}, "result == 6",
        "[ 1.00 0.33 -0.00 ] Bits=[ 1065353216 , 1051372203 , -2147483648 ] -> 1 0.333333343 -0 | "
        "[1 2 3]\tBits=[1065353216,1073741824,0] -> 1 2 0 | [ 1 2 3 ] Bits=[ 1073741824 , 0 ] -> 2 0 3 ! | "
        "[ 1 2 3 ] Bits= [ 0 , 0 , 0 ] -> 1 2 3 ! | [ 1 2 3 ] -> 1 2 3 ! | [ 1 2 ] Bits=[ 0 , 0 , 0 ] -> 1 2 7 !");
    ExpectValues<Vector4>(
        &Archive::ReadVector4, {7, 7, 7, 7}, "result == 8",
        "[ 1 2 3 4 ] Bits=[ 0 , 0 , 0 , 1065353216 ] -> 0 0 0 1 | [ 1 2 3 4 ] Bits=[ 0 , 0 , 0 ] -> 0 0 0 4 !");
    ExpectValues<Matrix33>(
        &Archive::ReadMatrix33, {{7, 7, 7}, {7, 7, 7}, {7, 7, 7}}, "result == 6",
        "\n [ 1 2 3 ] Bits=[ 0 , 0 , 0 ]\n [ 1 2 3 ]\n [ 1 2 3 ] Bits=[0,0,0] -> 0 0 0 / 1 2 3 / 0 0 0 !");
    ExpectValues<std::int64_t>(&Archive::ReadInt64, 7, "result == 1", "9007199254740993 -> 9007199254740993");
    ExpectValues<Color>(&Archive::ReadColor, {}, "result == 1", "ff0000ff -> 0 0 1 1");
}

TEST_F(TextValueTest, WhatIsTakenInSilenceIsNoted) {
    for (const bool isBitsMode : {false, true}) {
        m_IsBitsMode = isBitsMode;
        ExpectDeviations<std::int32_t>(
            &Archive::ReadInt, "12 | -12 | +12 | 12 \t\v | 0000000000012 | 2147483647 | -2147483648",
            "12x | 12.0 | 12 13 | 0x10 | 2147483648 | -2147483649 | 4294967297 | 99999999999999999999");
        ExpectDeviations<std::uint32_t>(&Archive::ReadInt, "0 | -1 | 3000000000 | 4294967295",
                                        "4294967296 | -2147483649 | 1,");
        ExpectDeviations<std::int64_t>(&Archive::ReadInt64, "9223372036854775807 | -9223372036854775808",
                                       "9223372036854775808 | 1 2 | 99999999999999999999");
        ExpectDeviations<float>(&Archive::ReadFloat,
                                "1.500000 | .5 | 1e-07 | 1e38 | 1e-60 | inf | -Infinity | nan | nan(0) | 1 ",
                                "1.5x | 1.500000x | 1.5 2 | 1,5 | 1e39 | -1e400 | 0x10 | 1e");
        ExpectDeviations<double>(&Archive::ReadDouble, "0.1 | 1e308 | -inf", "0.1x | 1e309");
        ExpectDeviations<bool>(&Archive::ReadBool, "TRUE | FALSE\t", "xTRUEx | TRUEx | FALSE, no: TRUE | a FALSE");
        ExpectDeviations<Color>(&Archive::ReadColor, "0 | ff0000ff | 0xFF0000FF | 000000001 | FF",
                                "1ff0000ff | -1 | fffgg | 0 0");
        ExpectDeviations<IntPair>(&Archive::ReadIntPair, "[ 1 , 2 ] | [1,2]",
                                  "[ 1 , 2 | [ 1 , 2 ] x | [ 1 , 2 , 3 ] | [ 1 , 4294967295 ] | [ 1 ]");
        ExpectDeviations<Vector3>(
            &Archive::ReadVector3, "[ 1.000000 2.000000 3.000000 ] | [1 2 3] | [ nan inf -inf ]",
            "[ 1.000000 2.000000 3.000000 | [ 1.000000 2.000000 3.000000 ]x | [ 1 2 3 4 ] | [ 1 2 1e39 ] | [ 1 2 ]");
        ExpectDeviations<Matrix33>(&Archive::ReadMatrix33, "\n [ 1 2 3 ]\n[1 2 3] \n\t[ 1 2 3 ]",
                                   "x\n[ 1 2 3 ]\n[ 1 2 3 ]\n[ 1 2 3 ] | \n[ 1 2 3 ]\n[ 1 2 3 ] 4\n[ 1 2 3 ] | "
                                   "\n[ 1 2 3 ]\n[ 1 2 3 ]\n[ 1 2 3");
        const auto readString = [](Archive& archive) {
            FixedString<20> value;
            ReadValue(archive, u"Value", value);
        };
        ExpectDeviation(readString, false, "\"a b\" | \"\" ");
        ExpectDeviation(readString, true, "\"a\"b\" | \"a\" b");
        const auto readObject = [](Archive& archive) {
            EmptyRecord object;
            ReadValue(archive, u"Value", object);
        };
        ExpectDeviation(readObject, false, " \t");
        ExpectDeviation(readObject, true, "x");
        // Exact bits belong to a value, where they are taken.
        ExpectDeviation([](Archive& archive) { ReadOver(0.0f, archive, &Archive::ReadFloat); }, !isBitsMode,
                        "0.33 Bits=1051372203 | inf Bits=-1 | 1e39 Bits=0");
        ExpectDeviation([](Archive& archive) { ReadOver(Vector3{}, archive, &Archive::ReadVector3); }, !isBitsMode,
                        "[ 1 2 3 ] Bits=[ 1 , 2 , -3 ] | [ 1 2 1e39 ] Bits=[1,2,3]");
    }
    ExpectDeviations<float>(&Archive::ReadFloat, "1", "1 Bits= | 1 Bits=1x | 1 Bits=4294967296 | Bits=1");
    ExpectDeviations<Vector3>(&Archive::ReadVector3, "[ 1 2 3 ]",
                              "[ 1 2 3 ] Bits=[ 1 , 2 ] | [ 1 2 3 ] Bits=[ 1 , 2 , 3");
    TakeReports();
}

TEST_F(TextValueTest, BitsAreTakenInAnyFileOnDemand) {
    const struct {
        const char* value;
        bool isTaken;
        float expected;
    } kCases[] = {{"0.33 Bits=1051372203", true, 0.333333343f},
                  {"0.33 Bits=1051372203", false, 0.33f},
                  {"0.330000", true, 0.33f},
                  {"0.33 Bits=", true, 0.33f}};
    for (const auto& c : kCases) {
        const std::string value = c.value;
        EXPECT_EQ(Read("Value " + value + "\nValue [ 1 2 3 ] Bits=[ 0 , 0 , 1065353216 ]\n",
                       [&](TextFileArchive& archive) {
                           if (c.isTaken)
                               archive.TakeBits();
                           EXPECT_EQ(ReadOver(7.0f, archive, &Archive::ReadFloat), c.expected) << value;
                           EXPECT_EQ(ReadOver<Vector3>({}, archive, &Archive::ReadVector3).z, c.isTaken ? 1.0f : 3.0f);
                       }),
                  "");
    }
}

TEST_F(TextValueTest, EveryValueComesBackInTheBitsForm) {
    const auto bitsOf = [](float value) { return std::bit_cast<std::uint32_t>(value); };
    for (const std::uint32_t bits :
         {0x00000000u, 0x80000000u, 0x00000001u, 0x807FFFFFu, 0x3EAAAAABu, 0x3DCCCCCDu, 0x7F7FFFFFu, 0xFF7FFFFFu,
          0x7F800000u, 0xFF800000u, 0x7FC00000u, 0xFFC00001u, 0x7F800001u, 0xFFBFFFFFu, 0x4B800001u, 0x00800000u}) {
        SCOPED_TRACE(bits);
        const auto value = std::bit_cast<float>(bits);
        const std::uint64_t twice = std::uint64_t{bits} << 32 | bits;
        const std::string text = Write(FloatForm::Bits, [&](Archive& archive) {
            archive.WriteFloat(kValue, value);
            archive.WriteDouble(kValue, std::bit_cast<double>(twice));
            archive.WriteVector4(kValue, {value, 1, value, value});
            archive.WriteMatrix33(kValue, {{}, {}, {0, 0, value}});
        });
        ReadBits(text, [&](Archive& archive) {
            EXPECT_EQ(bitsOf(ReadOver(7.0f, archive, &Archive::ReadFloat)), bits);
            EXPECT_EQ(std::bit_cast<std::uint64_t>(ReadOver(7.0, archive, &Archive::ReadDouble)), twice);
            const Vector4 vector = ReadOver<Vector4>({}, archive, &Archive::ReadVector4);
            EXPECT_TRUE(bitsOf(vector.x) == bits && vector.y == 1 && bitsOf(vector.w) == bits);
            EXPECT_EQ(bitsOf(ReadOver<Matrix33>({}, archive, &Archive::ReadMatrix33).At(2, 2)), bits);
        });
    }
}

} // namespace
} // namespace Corvid
