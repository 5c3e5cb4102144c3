#include <gtest/gtest.h>

#include <bit>
#include <cstdio>
#include <string>

#include "Tests/Engine/Archive/TextArchiveFixture.h"

namespace Corvid {
namespace {

enum class Kind { Int, Unsigned, Int64, Pair, Rect, Float, Double, Vec3, Vec4, Mat33, Mat44, Color, Bool };

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
            text += '|' + Of(matrix.GetRow(i));
        return text;
    }
};

template <class Value> std::string Read(Archive& archive, void (Archive::*read)(Label, Value&), Value value) {
    return Shown::Of(ReadOver(value, archive, read));
}

// Reads "Value" over components that are all 7 (a bool: true; a big matrix: 0) and shows what they are then.
std::string ReadShown(Archive& archive, Kind kind) {
    switch (kind) {
    case Kind::Int:
        return Read<std::int32_t>(archive, &Archive::ReadInt, 7);
    case Kind::Unsigned:
        return Read<std::uint32_t>(archive, &Archive::ReadInt, 7);
    case Kind::Int64:
        return Read<std::int64_t>(archive, &Archive::ReadInt64, 7);
    case Kind::Pair:
        return Read<IntPair>(archive, &Archive::ReadIntPair, {7, 7});
    case Kind::Rect:
        return Read<IntRect>(archive, &Archive::ReadIntRect, {7, 7, 7, 7});
    case Kind::Float:
        return Read<float>(archive, &Archive::ReadFloat, 7);
    case Kind::Double:
        return Read<double>(archive, &Archive::ReadDouble, 7);
    case Kind::Vec3:
        return Read<Vector3>(archive, &Archive::ReadVector3, {7, 7, 7});
    case Kind::Vec4:
        return Read<Vector4>(archive, &Archive::ReadVector4, {7, 7, 7, 7});
    case Kind::Mat33:
        return Read<Matrix33>(archive, &Archive::ReadMatrix33, {{7, 7, 7}, {7, 7, 7}, {7, 7, 7}});
    case Kind::Mat44:
        return Read<Matrix44>(archive, &Archive::ReadMatrix44, {});
    case Kind::Color:
        return Read<Color>(archive, &Archive::ReadColor, {7, 7, 7, 7});
    case Kind::Bool:
        return Read<bool>(archive, &Archive::ReadBool, true);
    }
    return "";
}

struct Case {
    Kind kind;
    const char* text; // behind the label and a blank
    const char* expected;
    const char* failed = nullptr; // the condition
};

class TextValueTest : public TextArchiveFixture {
protected:
    template <int Size> void ExpectValues(const Case (&cases)[Size], bool isBitsMode) {
        for (const Case& c : cases) {
            SCOPED_TRACE(testing::Message() << static_cast<int>(c.kind) << ": " << c.text);
            const std::string lines = std::string("Value ") + c.text + "\r\n";
            std::string shown;
            const auto read = [&](Archive& archive) { shown = ReadShown(archive, c.kind); };
            const std::string reports = isBitsMode ? ReadBits(lines, read) : TextArchiveFixture::Read(lines, read);
            EXPECT_EQ(reports, c.failed != nullptr ? Failed(c.failed) : "");
            EXPECT_EQ(shown, c.expected);
        }
    }
};

TEST_F(TextValueTest, NumbersAreReadAsFormattedInput) {
    const Case kCases[] = {
        {Kind::Int, "12", "12"},
        {Kind::Int, "-12", "-12"},
        {Kind::Int, "+012", "12"},
        {Kind::Int, "\t\v\f 12abc", "12"},
        {Kind::Int, "12.9", "12"},
        {Kind::Int, "0x10", "0"},
        {Kind::Int, "3000000000", "-1294967296"},
        {Kind::Int, "4294967297", "1"},
        {Kind::Int, "-2147483649", "2147483647"},
        {Kind::Int, "99999999999999999999", "1661992959"},
        {Kind::Int, "x12", "7", "result == 1"},
        {Kind::Int, "- 12", "7", "result == 1"},
        {Kind::Int, "+-12", "7", "result == 1"},
        {Kind::Int, "", "7", "result == 1"},
        {Kind::Int, "\xEF\xBC\x91", "7", "result == 1"}, // a full-width digit
        {Kind::Unsigned, "3000000000", "3000000000"},
        {Kind::Unsigned, "-1294967296", "3000000000"},
        {Kind::Unsigned, "x", "7", "result == 1"},
        {Kind::Int64, "-9223372036854775808", "-9223372036854775808"},
        {Kind::Int64, "9223372036854775808", "-9223372036854775808"},
        {Kind::Int64, "18446744073709551617x", "1"},
        {Kind::Int64, "99999999999999999999", "7766279631452241919"},
        {Kind::Int64, "x", "7", "result == 1"},

        {Kind::Float, "1.5", "1.5"},
        {Kind::Float, "+1.5x", "1.5"},
        {Kind::Float, ".5", "0.5"},
        {Kind::Float, "-5.", "-5"},
        {Kind::Float, "-0", "-0"},
        {Kind::Float, "-0.000000", "-0"},
        {Kind::Float, "1e3", "1000"},
        {Kind::Float, "1.E+03", "1000"},
        {Kind::Float, "1e400", "inf"},
        {Kind::Float, "-1e400", "-inf"},
        {Kind::Float, "-1e-400", "-0"},
        {Kind::Float, "1e-45", "1.40129846e-45"},
        {Kind::Float, "16777217", "16777216"},
        {Kind::Float, "16777217.00000000000000001", "16777218"}, // would be 16777216 by way of a double
        {Kind::Float, "340282346638528859811704183484516925440.000000", "3.40282347e+38"},
        {Kind::Float, "-inf", "-inf"},
        {Kind::Float, "INFINITY", "inf"},
        {Kind::Float, "nan", "nan"},
        {Kind::Float, "1,5", "1"},
        {Kind::Float, "0x10", "0"},
        {Kind::Float, ".", "7", "result == 1"},
        {Kind::Float, "e5", "7", "result == 1"},
        {Kind::Float, "--1", "7", "result == 1"},
        {Kind::Float, "", "7", "result == 1"},
        {Kind::Double, "0.1", "0.10000000000000001"},
        {Kind::Double, "1e308", "1e+308"},
        {Kind::Double, "-4.9e-324", "-4.9406564584124654e-324"},
        {Kind::Double, "1e309", "inf"},
        {Kind::Double, "x", "7", "result == 1"},

        {Kind::Color, "ff0000ff", "0 0 1 1"},
        {Kind::Color, "0xFF00ff00", "0 1 0 1"},
        {Kind::Color, "80402010", "0.250980407 0.125490203 0.0627451017 0.501960814"},
        {Kind::Color, "1ff0000ff", "0 0 1 1"},
        {Kind::Color, "-1", "1 1 1 1"},
        {Kind::Color, "0", "0 0 0 0"},
        {Kind::Color, "00", "0 0 0 0"},
        {Kind::Color, "fffgg", "0 0.0588235334 1 0"},
        {Kind::Color, "#ff", "7 7 7 7", "result == 1"},
        {Kind::Color, "", "7 7 7 7", "result == 1"},

        {Kind::Bool, "TRUE", "TRUE"},
        {Kind::Bool, "FALSE", "FALSE"},
        {Kind::Bool, "notFALSE!", "FALSE"},
        {Kind::Bool, "FALSE, no: TRUE", "TRUE"},
        {Kind::Bool, "FALS", "TRUE", "false"},
        {Kind::Bool, "false", "TRUE", "false"},
        {Kind::Bool, "0", "TRUE", "false"},
        {Kind::Bool, "", "TRUE", "false"},
    };
    ExpectValues(kCases, false);
}

TEST_F(TextValueTest, ComponentsInFrontOfAFaultAreStored) {
    const Case kCases[] = {
        {Kind::Pair, "[ 1 , -2 ]", "1 -2"},
        {Kind::Pair, "[1,2", "1 2"},
        {Kind::Pair, "[ 1 \t,\v 2 , 3 ]", "1 2"},
        {Kind::Pair, "[ 1 2 ]", "1 7", "result == 2"},
        {Kind::Pair, "[ 1 , x ]", "1 7", "result == 2"},
        {Kind::Pair, "1 , 2", "7 7", "result == 2"},
        {Kind::Pair, "", "7 7", "result == 2"},
        {Kind::Pair, "[ 1 , 4294967295 ]", "1 -1"},
        {Kind::Rect, "[ 1 , 2 , 3 , 4 ]", "1 2 3 4"},
        {Kind::Rect, "[ 1 , 2 , 3 ]", "1 2 3 7", "result == 4"},
        {Kind::Rect, "[ 1 , , 3 , 4 ]", "1 7 7 7", "result == 4"},

        {Kind::Vec3, "[ 1.000000 -2.500000 3.000000 ]", "1 -2.5 3"},
        {Kind::Vec3, "[1 .5 1e2", "1 0.5 100"},
        {Kind::Vec3, "[\t1\v2\f3 4 ]", "1 2 3"},
        {Kind::Vec3, "[ 1-2+3 ]", "1 -2 3"},
        {Kind::Vec3, "[ nan -inf 1.5.5 ]", "nan -inf 1.5"},
        {Kind::Vec3, "[ 1 2 ]", "1 2 7", "result == 3"},
        {Kind::Vec3, "[ 1 , 2 , 3 ]", "1 7 7", "result == 3"},
        {Kind::Vec3, "( 1 2 3 )", "7 7 7", "result == 3"},
        {Kind::Vec3, "1 2 3", "7 7 7", "result == 3"},
        {Kind::Vec4, "[ 1 2 3 4 ]", "1 2 3 4"},
        {Kind::Vec4, "[ 1 2 3 ]", "1 2 3 7", "result == 4"},

        {Kind::Mat33, "\n [ 1 2 3 ]\n\t\t[4 5 6]\nValue", "|1 2 3|4 5 6|7 7 7", "result == 3"},
        {Kind::Mat33, "junk\n[ 1 2 3 ]\n [ 4 x 6 ]\n[ 7 8 9 ]", "|1 2 3|4 7 7|7 8 9", "result == 3"},
        {Kind::Mat44, "\n[ 1 2 3 4 ]\n[ 5 6 7 8 ]\n[ 9 10 11 ]\n[ 13 14 15 16 ]",
         "|1 2 3 4|5 6 7 8|9 10 11 0|13 14 15 16", "result == 4"},
    };
    ExpectValues(kCases, false);
}

TEST_F(TextValueTest, BitsAreTakenInPlaceOfTheDecimals) {
    const Case kCases[] = {
        {Kind::Float, "0.33 Bits=1051372203", "0.333333343"},
        {Kind::Float, "9.99 Bits=-2147483648", "-0"},
        {Kind::Float, "1Bits=\t1", "1.40129846e-45"},
        {Kind::Float, "0 Bits=4286578688", "-inf"},
        {Kind::Float, "0.33", "7", "result == 2"},
        {Kind::Float, "0.33 Bits=", "7", "result == 2"},
        {Kind::Float, "0.33 Bits =1", "7", "result == 2"},
        {Kind::Float, "0.33 bits=1", "7", "result == 2"},
        {Kind::Float, "Bits=1", "7", "result == 2"},
        {Kind::Double, "0.10 Bits=4591870180066957722", "0.10000000000000001"},
        {Kind::Double, "0.10", "7", "result == 2"},
        {Kind::Vec3, "[ 1.00 0.33 -0.00 ] Bits=[ 1065353216 , 1051372203 , -2147483648 ]", "1 0.333333343 -0"},
        {Kind::Vec3, "[1 2 3]\tBits=[1065353216,1073741824,0]", "1 2 0"},
        {Kind::Vec3, "[ 1 2 3 ] Bits=[ 1065353216 , 1073741824 ]", "1 2 7", "result == 6"},
        {Kind::Vec3, "[ 1 2 3 ] Bits= [ 0 , 0 , 0 ]", "7 7 7", "result == 6"},
        {Kind::Vec3, "[ 1 2 3 ]", "7 7 7", "result == 6"},
        {Kind::Vec3, "[ 1 2 ] Bits=[ 0 , 0 , 0 ]", "7 7 7", "result == 6"},
        {Kind::Vec4, "[ 1 2 3 4 ] Bits=[ 0 , 0 , 0 , 1065353216 ]", "0 0 0 1"},
        {Kind::Vec4, "[ 1 2 3 4 ] Bits=[ 0 , 0 , 0 ]", "0 0 0 7", "result == 8"},
        {Kind::Mat33, "\n [ 1 2 3 ] Bits=[ 0 , 0 , 0 ]\n [ 1 2 3 ]\n [ 1 2 3 ] Bits=[0,0,0]", "|0 0 0|7 7 7|0 0 0",
         "result == 6"},
        {Kind::Int64, "9007199254740993", "9007199254740993"},
        {Kind::Color, "ff0000ff", "0 0 1 1"},
    };
    ExpectValues(kCases, true);
}

TEST_F(TextValueTest, EveryValueComesBackInTheBitsForm) {
    const std::uint32_t kBits[] = {
        0x00000000, 0x80000000, 0x00000001, 0x807FFFFF, 0x3EAAAAAB, 0x3DCCCCCD, 0x7F7FFFFF, 0xFF7FFFFF,
        0x7F800000, 0xFF800000, 0x7FC00000, 0xFFC00001, 0x7F800001, 0xFFBFFFFF, 0x4B800001, 0x00800000,
    };
    const std::string text = Write(true, [&](Archive& archive) {
        for (const std::uint32_t bits : kBits) {
            const auto value = std::bit_cast<float>(bits);
            archive.WriteFloat(u"F", value);
            archive.WriteVector3(u"V", {value, 1, value});
            archive.WriteVector4(u"W", {value, value, 1, value});
            archive.WriteDouble(u"D", std::bit_cast<double>(std::uint64_t{bits} << 32 | bits));
            archive.WriteInt64(u"I", static_cast<std::int64_t>(std::uint64_t{bits} << 32 | bits));
        }
    });
    EXPECT_EQ(ReadBits(text,
                       [&](Archive& archive) {
                           const auto bitsOf = [](float value) { return std::bit_cast<std::uint32_t>(value); };
                           for (const std::uint32_t bits : kBits) {
                               float f;
                               archive.ReadFloat(u"F", f);
                               EXPECT_EQ(bitsOf(f), bits);
                               Vector3 v;
                               archive.ReadVector3(u"V", v);
                               EXPECT_TRUE(bitsOf(v.x) == bits && v.y == 1 && bitsOf(v.z) == bits) << bits;
                               Vector4 w;
                               archive.ReadVector4(u"W", w);
                               EXPECT_TRUE(bitsOf(w.x) == bits && bitsOf(w.y) == bits && bitsOf(w.w) == bits) << bits;
                               double d;
                               archive.ReadDouble(u"D", d);
                               EXPECT_EQ(std::bit_cast<std::uint64_t>(d), std::uint64_t{bits} << 32 | bits);
                               std::int64_t i;
                               archive.ReadInt64(u"I", i);
                               EXPECT_EQ(static_cast<std::uint64_t>(i), std::uint64_t{bits} << 32 | bits);
                           }
                       }),
              "");
}

} // namespace
} // namespace Corvid
