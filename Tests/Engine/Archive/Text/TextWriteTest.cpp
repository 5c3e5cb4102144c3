#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <string>
#include <string_view>

#include "Tests/Engine/Archive/TextArchiveFixture.h"

namespace Corvid {
namespace {

using A = Archive;

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

class Nest final : public Archivable {
public:
    Nest(int depth, const std::function<void(Archive&)>& write) : m_Depth(depth), m_Write(write) {}
    void Load(Archive&) override {}
    void Save(Archive& archive) const override {
        if (m_Depth == 0)
            m_Write(archive);
        else
            archive.WriteLabeledObject(u"ALabelThatIsLongerThanSixteenLetters", Nest(m_Depth - 1, m_Write));
    }

private:
    int m_Depth;
    const std::function<void(Archive&)>& m_Write;
};

class TextWriteTest : public TextArchiveFixture {
protected:
    // What is written under "Value", in every float form; each line behind the tabs of its depth.
    template <class Written, class Value>
    void ExpectLines(void (Archive::*write)(Label, Written), const Value& value, std::string_view sixDecimals,
                     std::string_view bits = {}, std::string_view exact = {}) {
        const std::function<void(Archive&)> writeValue = [&](Archive& archive) { (archive.*write)(kValue, value); };
        for (const int depth : {0, 1, 2, 15, 16, 17, 20}) {
            for (const FloatForm form : {FloatForm::SixDecimals, FloatForm::Bits, FloatForm::Exact}) {
                const std::string_view other = form == FloatForm::Bits ? bits : exact;
                std::string expected;
                for (int i = 0; i < depth; ++i)
                    expected +=
                        std::string(static_cast<std::size_t>(i), '\t') + "ALabelThatIsLongerThanSixteenLetters\r\n";
                expected.append(static_cast<std::size_t>(depth), '\t').append("Value");
                for (const char c : form == FloatForm::SixDecimals || other.empty() ? sixDecimals : other) {
                    if (c == '\n') // the row of a matrix
                        expected.append("\r\n").append(static_cast<std::size_t>(depth) + 1, '\t');
                    else
                        expected.push_back(c);
                }
                const Nest nest(depth, writeValue);
                EXPECT_EQ(Write(form,
                                [&](Archive& archive) {
                                    archive.WriteObject(nest);
                                    archive.WriteBool(u"Back", true); // at the outer depth again
                                }),
                          expected + "\r\nBack TRUE\r\n");
            }
        }
        EXPECT_EQ(TakeReports(), ""); // "m_TabDepth > 0" held
    }
};

TEST_F(TextWriteTest, EveryOperationAtEveryDepth) {
    ExpectLines<std::int32_t>(&A::WriteInt, 3, " 3");
    ExpectLines<std::int32_t>(&A::WriteInt, -2147483647 - 1, " -2147483648");
    ExpectLines<std::int32_t>(&A::WriteInt, 1234567, " 1234567");
    ExpectLines<std::uint32_t>(&A::WriteInt, 3000000000u, " -1294967296");
    ExpectLines(&A::WriteEnum, -1, " -1");
    ExpectLines(&A::WriteInt64, std::int64_t{-9007199254740993}, " -9007199254740993");
    ExpectLines(&A::WriteBool, true, " TRUE");
    ExpectLines(&A::WriteBool, false, " FALSE");
    ExpectLines<const IntPair&, IntPair>(&A::WriteIntPair, {-1, 32}, " [ -1 , 32 ]");
    ExpectLines<const IntRect&, IntRect>(&A::WriteIntRect, {1, -2, 3000000, 4}, " [ 1 , -2 , 3000000 , 4 ]");
    ExpectLines(&A::WriteString, u"Hull", " \"Hull\"");
    ExpectLines(&A::WriteColor, kWhite, " ffffffff");
    ExpectLines(&A::WriteColor, Color{0, 0, 1, 1}, " ff0000ff");
    ExpectLines(&A::WriteColor, Color{0.5f, 2, kNan, -1}, " 80ff00");
    ExpectLines(&A::WriteColor, Color{}, " 0");

    ExpectLines(&A::WriteFloat, 2.5f, " 2.500000", " 2.50 Bits=1075838976");
    ExpectLines(&A::WriteFloat, -0.0f, " -0.000000", " -0.00 Bits=-2147483648");
    ExpectLines(&A::WriteFloat, 1.0f / 3.0f, " 0.333333", " 0.33 Bits=1051372203", " 0.33333334");
    ExpectLines(&A::WriteFloat, 3.0e10f, " 30000001024.000000", " 30000001024.00 Bits=1356825718");
    ExpectLines(&A::WriteFloat, -kInfinity, " -inf", " -inf Bits=-8388608");
    ExpectLines(&A::WriteFloat, std::copysign(kNan, -1.0f), " -nan", " -nan Bits=-4194304");
    ExpectLines(&A::WriteDouble, 0.1, " 0.100000", " 0.10 Bits=4591870180066957722");
    ExpectLines(&A::WriteDouble, 1.0 / 3.0, " 0.333333", " 0.33 Bits=4599676419421066581", " 0.3333333333333333");
    ExpectLines(&A::WriteDouble, 1.0 / 128.0, " 0.007812", " 0.01 Bits=4575657221408423936", " 0.0078125");
    ExpectLines(&A::WriteVector3, Vector3{1, 0, -3.25f}, " [ 1.000000 0.000000 -3.250000 ]",
                " [ 1.00 0.00 -3.25 ] Bits=[ 1065353216 , 0 , -1068498944 ]");
    ExpectLines(&A::WriteVector3, Vector3{1234.5f, kInfinity, kNan}, " [ 1234.500000 inf nan ]",
                " [ 1234.50 inf nan ] Bits=[ 1150963712 , 2139095040 , 2143289344 ]");
    ExpectLines(&A::WriteVector3, Vector3{1234.5f, 1e-7f, -0.7f / 3.0f}, " [ 1234.500000 0.000000 -0.233333 ]",
                " [ 1234.50 0.00 -0.23 ] Bits=[ 1150963712 , 869711765 , -1100026129 ]",
                " [ 1234.500000 1.0e-07 -0.23333333 ]");
    ExpectLines(&A::WriteVector4, Vector4{0, 1, 0, -2}, " [ 0.000000 1.000000 0.000000 -2.000000 ]",
                " [ 0.00 1.00 0.00 -2.00 ] Bits=[ 0 , 1065353216 , 0 , -1073741824 ]");
    ExpectLines(&A::WriteMatrix33, Matrix33({1, 0, 0}, {0, 2, 0}, {0, 0, 0}),
                "\n [ 1.000000 0.000000 0.000000 ]\n [ 0.000000 2.000000 0.000000 ]\n [ 0.000000 0.000000 0.000000 ]",
                "\n [ 1.00 0.00 0.00 ] Bits=[ 1065353216 , 0 , 0 ]\n [ 0.00 2.00 0.00 ] Bits=[ 0 , 1073741824 , 0 ]"
                "\n [ 0.00 0.00 0.00 ] Bits=[ 0 , 0 , 0 ]");
    Matrix44 matrix;
    matrix.At(3, 0) = 1.0f;
    const std::string zeros = "\n [ 0.000000 0.000000 0.000000 0.000000 ]";
    const std::string zeroBits = "\n [ 0.00 0.00 0.00 0.00 ] Bits=[ 0 , 0 , 0 , 0 ]";
    ExpectLines(&A::WriteMatrix44, matrix, zeros + zeros + zeros + "\n [ 1.000000 0.000000 0.000000 0.000000 ]",
                zeroBits + zeroBits + zeroBits + "\n [ 1.00 0.00 0.00 0.00 ] Bits=[ 1065353216 , 0 , 0 , 0 ]");
    EXPECT_EQ(Write(FloatForm::SixDecimals, [](Archive& archive) { archive.WriteIntPair(kValue, 64, 32); }),
              "Value [ 64 , 32 ]\r\n");
}

TEST_F(TextWriteTest, StringsAreWrittenAsTheyAreHeld) {
    const std::u16string letters(1023, u'a'); // a pair across the blocks of writing
    const struct {
        const char* name;
        std::u16string value;
        std::string expected;
    } kCases[] = {
        {"Empty", u"", ""},
        {"Quotes", u"\"", "\""},
        {"LineFeed", u"a\nb\r\nc\r", "a\r\nb\r\r\nc\r"},
        {"Letters", u"\u00E9\u20AC\uFFFF", "\xC3\xA9\xE2\x82\xAC\xEF\xBF\xBF"},
        {"Pair", u"\xD83D\xDE00", "\xF0\x9F\x98\x80"},
        {"LoneHalves", u"\xDE00\xD83D-\xD83D", "\xEF\xBF\xBD\xEF\xBF\xBD-\xEF\xBF\xBD"},
        {"Long", letters + u"\xD83D\xDE00\n" + letters,
         std::string(1023, 'a') + "\xF0\x9F\x98\x80\r\n" + std::string(1023, 'a')},
    };
    for (const auto& c : kCases) {
        EXPECT_EQ(SaveWith(ArchiveFormat::Text,
                           [&](Archive& archive) {
                               archive.WriteString(u"Name", c.value.c_str());
                               archive.WriteBool(u"Next", true);
                           }),
                  std::string(kTextHeader) + "Name \"" + c.expected + "\"\r\nNext TRUE\r\n")
            << c.name;
    }
}

} // namespace
} // namespace Corvid
