#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <string>
#include <vector>

#include "Tests/Engine/Archive/TextArchiveFixture.h"

namespace Corvid {
namespace {

// A text archive reads a line in one of three ways. Whatever the input is, all of them must read the same.
enum class Way { AsWritten, InPlace, ByLine };

// Asks for every operation that has more than one way, in nested objects.
class Probe final : public Record<Probe> {
public:
    explicit Probe(int depth) : m_Inner(depth > 0 ? std::make_unique<Probe>(depth - 1) : nullptr) {}

    static void Fields(auto& self, auto& fields) {
        fields.Value(u"Count", self.m_Count);
        fields.Value(u"FlagsOfThisWholeObject", self.m_Flags);
        fields.Value(u"Radius", self.m_Radius);
        fields.Value(u"Offset", self.m_Offset);
        fields.Value(u"Tint", self.m_Tint);
        fields.Value(u"Glow", self.m_Glow);
        fields.Value(u"IsEnabled", self.m_IsEnabled);
        fields.Value(u"Name", self.m_Name);
        fields.Value(u"Frame", self.m_Frame);
        if (self.m_Inner != nullptr)
            fields.Value(u"Inner", *self.m_Inner);
        fields.Value(u"Count", self.m_LastCount);
    }

    // Values that no line has.
    void Clear() {
        m_Count = m_LastCount = 7;
        m_Flags = 7;
        m_Radius = 7;
        m_Offset = {7, 7, 7};
        m_Tint = m_Glow = {0, 1, 0, 1};
        m_IsEnabled = true;
        m_Name = u"kept";
        m_Frame = Matrix33();
        if (m_Inner != nullptr)
            m_Inner->Clear();
    }

private:
    std::int32_t m_Count = -12, m_LastCount = 123456789;
    std::uint32_t m_Flags = 3000000000;
    float m_Radius = 2.5f;
    Vector3 m_Offset{0.125f, -0.0f, 123456.0f};
    Color m_Tint, m_Glow = kWhite;
    bool m_IsEnabled = false;
    FixedString<20> m_Name{u"\u20ACHull"};
    Matrix33 m_Frame = Matrix33::Identity();
    std::unique_ptr<Probe> m_Inner;
};

class TextWaysTest : public TextArchiveFixture {
protected:
    static constexpr int kDepth = 2;

    struct Result {
        std::string values; // in the bits form
        std::vector<std::uint64_t> positions;
        std::string reports; // unread input is the last of them
        std::uint32_t checksum = 0;
    };

    Result ReadBy(Way way, const std::string& lines, int depth) {
        Result result;
        const auto read = [&](TextFileArchive& archive) {
            archive.EnableChecksum(way != Way::AsWritten);
            if (way == Way::ByLine)
                archive.ReadByLineOnly();
            Probe probe(depth);
            probe.Clear();
            archive.ReadObject(probe);
            archive.ReportUnreadInput();
            result.checksum = archive.GetChecksum();
            for (const ReportPosition& position : m_Reports.GetPositions())
                result.positions.push_back(position.m_Value);
            result.values = Write(FloatForm::Bits, [&](Archive& values) { values.WriteObject(probe); });
        };
        result.reports = Read(lines, read);
        return result;
    }

    // Returns the values, if all ways agree on everything.
    Result ExpectOneResult(const std::string& lines, int depth = kDepth) {
        const Result byLine = ReadBy(Way::ByLine, lines, depth);
        for (const Way way : {Way::AsWritten, Way::InPlace}) {
            const Result other = ReadBy(way, lines, depth);
            const bool isSame = other.values == byLine.values && other.positions == byLine.positions &&
                                (way == Way::AsWritten || other.checksum == byLine.checksum);
            EXPECT_TRUE(isSame) << static_cast<int>(way) << '\n' << lines;
            EXPECT_EQ(other.reports, byLine.reports) << static_cast<int>(way) << '\n' << lines;
        }
        return byLine;
    }

    std::string Lines(int depth = kDepth) {
        return Write(FloatForm::SixDecimals, [depth](Archive& archive) { archive.WriteObject(Probe(depth)); });
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
        EXPECT_EQ(result.values,
                  Write(FloatForm::Bits, [depth](Archive& archive) { archive.WriteObject(Probe(depth)); }));
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
