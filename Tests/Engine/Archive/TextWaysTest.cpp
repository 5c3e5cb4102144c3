#include <gtest/gtest.h>

#include <bit>
#include <random>
#include <string>
#include <vector>

#include "Tests/Engine/Archive/TextArchiveFixture.h"

namespace Corvid {
namespace {

// A text archive reads a line in one of three ways. Whatever the input is, all of them must read the same.
enum class Way { Quick, Ahead, General };

// Asks for every operation that has more than one way, in nested objects, and notes what came of it.
class Probe final : public Archivable {
public:
    Probe(std::vector<std::uint32_t>& values, int depth) : m_Values(values), m_Depth(depth) {}
    void Load(Archive& archive) override {
        std::int32_t count = 7;
        std::uint32_t flags = 7;
        float radius = 7;
        Vector3 offset{7, 7, 7};
        Color tint{7, 7, 7, 7}, glow{7, 7, 7, 7};
        bool isEnabled = true;
        FixedString<20> name;
        Matrix33 frame;
        archive.ReadInt(u"Count", count);
        archive.ReadInt(u"FlagsOfThisWholeObject", flags);
        archive.ReadFloat(u"Radius", radius);
        archive.ReadVector3(u"Offset", offset);
        archive.ReadColor(u"Tint", tint);
        archive.ReadColor(u"Glow", glow);
        archive.ReadBool(u"IsEnabled", isEnabled);
        ReadValue(archive, u"Name", name);
        archive.ReadMatrix33(u"Frame", frame);
        Probe inner(m_Values, m_Depth - 1);
        if (m_Depth > 0)
            archive.ReadLabeledObject(u"Inner", inner);
        archive.ReadInt(u"Count", count);
        Note(static_cast<std::uint32_t>(count), flags, radius, offset, tint, glow, isEnabled, frame);
        for (const char16_t unit : name.GetView())
            Note(std::uint32_t{unit});
    }
    void Save(Archive& archive) const override {
        archive.WriteInt(u"Count", std::int32_t{-12});
        archive.WriteInt(u"FlagsOfThisWholeObject", std::uint32_t{3000000000});
        archive.WriteFloat(u"Radius", 2.5f);
        archive.WriteVector3(u"Offset", {0.125f, -0.0f, 123456.0f});
        archive.WriteColor(u"Tint", Color{});
        archive.WriteColor(u"Glow", kWhite);
        archive.WriteBool(u"IsEnabled", false);
        archive.WriteString(u"Name", u"\u20ACHull");
        archive.WriteMatrix33(u"Frame", Matrix33::Identity());
        if (m_Depth > 0)
            archive.WriteLabeledObject(u"Inner", Probe(m_Values, m_Depth - 1));
        archive.WriteInt(u"Count", std::int32_t{123456789});
    }

private:
    void Note(std::uint32_t value) { m_Values.push_back(value); }
    void Note(float value) { Note(std::bit_cast<std::uint32_t>(value)); }
    void Note(bool value) { Note(std::uint32_t{value}); }
    void Note(const Vector3& value) { Note(value.x, value.y, value.z); }
    void Note(const Color& value) { Note(value.red, value.green, value.blue, value.alpha); }
    void Note(const Matrix33& value) { Note(value.GetRow(0), value.GetRow(1), value.GetRow(2)); }
    template <class First, class... More> void Note(const First& first, const More&... more) {
        Note(first);
        Note(more...);
    }

    std::vector<std::uint32_t>& m_Values;
    int m_Depth;
};

class TextWaysTest : public TextArchiveFixture {
protected:
    static constexpr int kDepth = 2;

    struct Result {
        std::vector<std::uint32_t> values;
        std::vector<std::uint64_t> positions;
        std::string reports; // unread input is the last of them
        std::uint32_t checksum = 0;
    };

    Result ReadBy(Way way, const std::string& lines, int depth) {
        Result result;
        const auto read = [&](TextFileArchive& archive) {
            archive.EnableChecksum(way != Way::Quick);
            if (way == Way::General)
                archive.CloseFastWay();
            Probe probe(result.values, depth);
            archive.ReadObject(probe);
            archive.ReportUnreadInput();
            result.checksum = archive.GetChecksum();
            for (const ReportPosition& position : m_Reports.GetPositions())
                result.positions.push_back(position.m_Value);
        };
        result.reports = Read(lines, read);
        return result;
    }

    // Returns the values, if all ways agree on everything.
    Result ExpectOneResult(const std::string& lines, int depth = kDepth) {
        const Result general = ReadBy(Way::General, lines, depth);
        for (const Way way : {Way::Quick, Way::Ahead}) {
            const Result other = ReadBy(way, lines, depth);
            const bool isSame = other.values == general.values && other.positions == general.positions &&
                                (way == Way::Quick || other.checksum == general.checksum);
            EXPECT_TRUE(isSame) << static_cast<int>(way) << '\n' << lines;
            EXPECT_EQ(other.reports, general.reports) << static_cast<int>(way) << '\n' << lines;
        }
        return general;
    }

    static std::string Lines(int depth = kDepth) {
        std::vector<std::uint32_t> none;
        std::string bytes;
        TextFileArchive archive(File::WriteToMemory(u"", bytes));
        Probe(none, depth).Save(archive);
        archive.GetFile().Close();
        return bytes;
    }

    static std::string Replace(std::string text, std::string_view part, std::string_view by) {
        for (std::size_t at = 0; (at = text.find(part, at)) != text.npos; at += by.size())
            text.replace(at, part.size(), by);
        return text;
    }
};

TEST_F(TextWaysTest, WhatIsWrittenIsReadInEveryDepth) {
    for (const int depth : {0, 1, 7, 8, 9, 20}) {
        const Result result = ExpectOneResult(Lines(depth), depth);
        EXPECT_EQ(result.reports, "") << depth;
        ASSERT_GT(result.values.size(), 2u);
        EXPECT_EQ(result.values[0], 123456789u);
        EXPECT_EQ(result.values[1], 3000000000u);
    }
}

TEST_F(TextWaysTest, ShapeOfALineDoesNotMatter) {
    const struct {
        const char* name;
        const char* part;
        std::string by;
        bool isClean; // all is read as before
    } kCases[] = {
        {"LfEnds", "\r\n", "\n", true},
        {"CrCrLfEnds", "\r\n", "\r\r\n", true},
        {"BlanksAtTheEnds", "\r\n", " \t\r\n", true},
        {"OtherWhiteSpaceAtTheEnds", "\r\n", "\v\f \r\n", true},
        {"NoTabs", "\t", "", true},
        {"BlanksForTabs", "\t", "   ", true},
        {"VerticalTabs", "\t", "\v", true},
        {"TwoBlanks", " ", "  ", true},
        {"TabsForBlanks", " ", "\t", true},
        {"LoneCrForBlanks", " ", "\r", true},
        {"NoBlanksInBrackets", "[ ", "[", true},
        {"PlusSigns", " 123456", " +123456", true},
        {"LeadingZeros", " 0.125", " 000.125", true},
        {"NoLeadingZero", " 0.125", " .125", true},
        {"ThreeDecimals", "0.125000", "0.125", true},
        {"NineDecimals", "0.125000", "0.125000000", true},
        {"NoPoint", "123456.000000", "123456", true},
        {"Exponent", "123456.000000", "1.23456e+5", true},
        {"ThirdOfMany", "2.500000", "2.50000000000000000000000000000000000000000000000000000000000000001", true},
        {"Infinite", "2.500000", "-inf", false},
        {"Nan", "0.125000", "nan(123)", false},
        {"WrappedInt", "-12\r", "4294967284\r", true},
        {"PrefixedColor", "ffffffff", "0xFFFFFFFF", true},
        {"ZeroColor", "Tint 0", "Tint 00000000", true},
        {"JunkBehindNumbers", "\r\n", " junk\r\n", true},
        {"NumbersIntoJunk", "00\r", "00x\r", true},
        {"FourthComponent", " ]", " 1.000000 ]", true},
        {"NoClosingBracket", " ]", "", true},
        {"TwoComponents", "0.125000 ", "", false},
        {"NoNumber", "2.500000", "x", false},
        {"NoValue", "2.500000", "", false},
        {"MissingLabel", "Radius", "radius", false},
        {"LongerLabel", "Offset", "Offsets", false},
        {"LongerLongLabel", "FlagsOfThisWholeObject", "FlagsOfThisWholeObjects", false},
        {"ObjectWithJunk", "Inner\r", "Inner { \r", true},
        {"ObjectMissing", "Inner", "Outer", false},
        {"BlankLines", "\tRadius", "\r\n\tRadius", false},
        {"NulBehindNumber", "2.500000", std::string("2.500000\0 junk", 14), true},
        {"NulInFront", "\tRadius", std::string("\0Radius", 7), false},
        {"LongLine1022", "Radius ", "Radius " + std::string(1004, ' '), true},
        {"LongLine1023", "Radius ", "Radius " + std::string(1007, ' '), false},
        {"LongLine1024", "Radius ", "Radius " + std::string(1008, ' '), false},
        {"LongLineIsTwo", "Radius 2.500000", "Radius 2.5" + std::string(1011, ' ') + "Offset [ 1 2 3 ]", false},
        {"IllFormed", "Hull", "\xC3", false},
    };
    const std::string lines = Lines();
    const Result clean = ExpectOneResult(lines);
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.name);
        const std::string changed = Replace(lines, c.part, c.by);
        ASSERT_NE(changed, lines);
        const Result result = ExpectOneResult(changed);
        EXPECT_EQ(result.values == clean.values && result.reports.empty(), c.isClean) << result.reports;
    }
}

TEST_F(TextWaysTest, InputMayEndAnywhere) {
    const std::string lines = Lines(1);
    for (std::size_t length = 0; length <= lines.size(); ++length)
        ExpectOneResult(lines.substr(0, length), 1);
}

TEST_F(TextWaysTest, SmallChangesAreReadTheSame) {
    const std::string lines = Lines(1);
    const std::string pieces[] = {" ",
                                  "\t",
                                  "\n",
                                  "\r",
                                  "\r\n",
                                  "\v",
                                  "0",
                                  "9",
                                  ".",
                                  "-",
                                  "e",
                                  "[",
                                  "]",
                                  "\"",
                                  "x",
                                  "\xC3",
                                  std::string(1, '\0'),
                                  "Count ",
                                  "Inner",
                                  std::string(1023, ' ')};
    std::mt19937 random(20240229);
    const auto below = [&random](std::size_t bound) { return random() % bound; };
    for (int i = 0; i < 10000 && !HasFailure(); ++i) {
        std::string changed = lines;
        for (std::size_t changes = 1 + below(3); changes > 0; --changes) {
            const std::size_t at = below(changed.size());
            switch (below(3)) {
            case 0:
                changed.erase(at, 1 + below(3));
                break;
            case 1:
                changed.insert(at, pieces[below(std::size(pieces))]);
                break;
            default:
                changed.replace(at, 1, pieces[below(std::size(pieces))]);
            }
        }
        ExpectOneResult(changed, 1);
    }
}

} // namespace
} // namespace Corvid
