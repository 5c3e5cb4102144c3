#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "Tests/Engine/Archive/TextArchiveFixture.h"

namespace Corvid {
namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

// One of every operation.
class Everything : public Archivable {
public:
    void Load(Archive&) override {}
    void Save(Archive& archive) const override {
        archive.WriteInt(u"Count", std::int32_t{3});
        archive.WriteInt(u"Count", std::int32_t{-2147483647 - 1});
        archive.WriteInt(u"Count", std::uint32_t{3000000000});
        archive.WriteEnum(u"Kind", -1);
        archive.WriteInt64(u"Big", std::int64_t{-9007199254740993});
        archive.WriteBool(u"IsEnabled", true);
        archive.WriteBool(u"IsVisible", false);
        archive.WriteFloat(u"Radius", 2.5f);
        archive.WriteFloat(u"Zero", -0.0f);
        archive.WriteFloat(u"Third", 1.0f / 3.0f);
        archive.WriteFloat(u"Large", 3.0e10f);
        archive.WriteFloat(u"Infinite", -kInfinity);
        archive.WriteFloat(u"Nan", std::copysign(kNan, -1.0f));
        archive.WriteDouble(u"Exact", 0.1);
        archive.WriteDouble(u"Half", 1.0 / 128.0);
        archive.WriteVector3(u"Offset", {1.0f, 0.0f, -3.25f});
        archive.WriteVector3(u"Far", {1234.5f, kInfinity, kNan});
        archive.WriteVector4(u"Plane", {0.0f, 1.0f, 0.0f, -2.0f});
        archive.WriteIntPair(u"Size", IntPair{64, 32});
        archive.WriteIntPair(u"Size", -1, 0);
        archive.WriteIntRect(u"Area", IntRect{1, -2, 3000000, 4});
        archive.WriteString(u"Name", u"Hull");
        archive.WriteMatrix33(u"Frame", Matrix33::Identity());
        archive.WriteMatrix44(u"View", Matrix44());
        archive.WriteColor(u"White", kWhite);
        archive.WriteColor(u"Blue", {0.0f, 0.0f, 1.0f, 1.0f});
        archive.WriteColor(u"Mixed", {0.5f, 2.0f, kNan, -1.0f});
        archive.WriteColor(u"None", Color{});
        archive.WriteLabeledObject(u"ALabelThatIsLongerThanSixteenLetters", Inner());
        archive.WriteObject(Inner());
    }

private:
    class Inner final : public Archivable {
    public:
        void Load(Archive&) override {}
        void Save(Archive& archive) const override { archive.WriteInt(u"AnotherLongerLabel", std::int32_t{0}); }
    };
};

// Behind each line's own tabs: its two forms, where they differ.
const struct {
    const char* sixDecimals;
    const char* bits;
} kLines[] = {
    {"Count 3", nullptr},
    {"Count -2147483648", nullptr},
    {"Count -1294967296", nullptr},
    {"Kind -1", nullptr},
    {"Big -9007199254740993", nullptr},
    {"IsEnabled TRUE", nullptr},
    {"IsVisible FALSE", nullptr},
    {"Radius 2.500000", "Radius 2.50 Bits=1075838976"},
    {"Zero -0.000000", "Zero -0.00 Bits=-2147483648"},
    {"Third 0.333333", "Third 0.33 Bits=1051372203"},
    {"Large 30000001024.000000", "Large 30000001024.00 Bits=1356825718"},
    {"Infinite -inf", "Infinite -inf Bits=-8388608"},
    {"Nan -nan", "Nan -nan Bits=-4194304"},
    {"Exact 0.100000", "Exact 0.10 Bits=4591870180066957722"},
    {"Half 0.007812", "Half 0.01 Bits=4575657221408423936"},
    {"Offset [ 1.000000 0.000000 -3.250000 ]", "Offset [ 1.00 0.00 -3.25 ] Bits=[ 1065353216 , 0 , -1068498944 ]"},
    {"Far [ 1234.500000 inf nan ]", "Far [ 1234.50 inf nan ] Bits=[ 1150963712 , 2139095040 , 2143289344 ]"},
    {"Plane [ 0.000000 1.000000 0.000000 -2.000000 ]",
     "Plane [ 0.00 1.00 0.00 -2.00 ] Bits=[ 0 , 1065353216 , 0 , -1073741824 ]"},
    {"Size [ 64 , 32 ]", nullptr},
    {"Size [ -1 , 0 ]", nullptr},
    {"Area [ 1 , -2 , 3000000 , 4 ]", nullptr},
    {"Name \"Hull\"", nullptr},
    {"Frame", nullptr},
    {"\t [ 1.000000 0.000000 0.000000 ]", "\t [ 1.00 0.00 0.00 ] Bits=[ 1065353216 , 0 , 0 ]"},
    {"\t [ 0.000000 1.000000 0.000000 ]", "\t [ 0.00 1.00 0.00 ] Bits=[ 0 , 1065353216 , 0 ]"},
    {"\t [ 0.000000 0.000000 1.000000 ]", "\t [ 0.00 0.00 1.00 ] Bits=[ 0 , 0 , 1065353216 ]"},
    {"View", nullptr},
    {"\t [ 0.000000 0.000000 0.000000 0.000000 ]", "\t [ 0.00 0.00 0.00 0.00 ] Bits=[ 0 , 0 , 0 , 0 ]"},
    {"\t [ 0.000000 0.000000 0.000000 0.000000 ]", "\t [ 0.00 0.00 0.00 0.00 ] Bits=[ 0 , 0 , 0 , 0 ]"},
    {"\t [ 0.000000 0.000000 0.000000 0.000000 ]", "\t [ 0.00 0.00 0.00 0.00 ] Bits=[ 0 , 0 , 0 , 0 ]"},
    {"\t [ 0.000000 0.000000 0.000000 0.000000 ]", "\t [ 0.00 0.00 0.00 0.00 ] Bits=[ 0 , 0 , 0 , 0 ]"},
    {"White ffffffff", nullptr},
    {"Blue ff0000ff", nullptr},
    {"Mixed 80ff00", nullptr},
    {"None 0", nullptr},
    {"ALabelThatIsLongerThanSixteenLetters", nullptr},
    {"\tAnotherLongerLabel 0", nullptr},
    {"AnotherLongerLabel 0", nullptr},
};

class Nest final : public Archivable {
public:
    explicit Nest(int depth) : m_Depth(depth) {}
    void Load(Archive&) override {}
    void Save(Archive& archive) const override {
        if (m_Depth == 0)
            Everything().Save(archive);
        else
            archive.WriteLabeledObject(u"In", Nest(m_Depth - 1));
    }

private:
    int m_Depth;
};

using TextWriteTest = TextArchiveFixture;

TEST_F(TextWriteTest, EveryOperationAtEveryDepth) {
    for (const int depth : {0, 1, 2, 15, 16, 17, 20}) {
        for (const bool isBitsMode : {false, true}) {
            std::string expected;
            for (int i = 0; i < depth; ++i)
                expected += std::string(static_cast<std::size_t>(i), '\t') + "In\r\n";
            for (const auto& line : kLines) {
                expected.append(static_cast<std::size_t>(depth), '\t');
                expected.append(isBitsMode && line.bits != nullptr ? line.bits : line.sixDecimals).append("\r\n");
            }
            const Nest nest(depth);
            EXPECT_EQ(Write(isBitsMode,
                            [&](Archive& archive) {
                                archive.WriteObject(nest);
                                archive.WriteBool(u"Back", true); // at the outer depth again
                            }),
                      expected + "Back TRUE\r\n")
                << depth << isBitsMode;
        }
    }
    EXPECT_EQ(TakeReports(), ""); // "m_TabDepth > 0" held
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
