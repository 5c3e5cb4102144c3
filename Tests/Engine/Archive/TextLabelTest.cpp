#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "Tests/Engine/Archive/TextArchiveFixture.h"

namespace Corvid {
namespace {

using namespace std::string_literals;

constexpr std::int32_t kKept = -7;
constexpr const char* kReplacement = "\xEF\xBF\xBD";

using TextLabelTest = TextArchiveFixture;

std::string Utf16(std::u16string_view text) {
    std::string bytes = "\xFF\xFE";
    for (const char16_t unit : text)
        bytes.append({static_cast<char>(unit & 0xFF), static_cast<char>(unit >> 8)});
    return bytes;
}

TEST_F(TextLabelTest, LineIsTakenByItsWholeLabel) {
    std::string replacements;
    for (int i = 0; i < 7; ++i)
        replacements += kReplacement;
    const struct {
        const char* name;
        std::string lines;
        std::int32_t expected;
        std::string reports;
    } kCases[] = {
        {"Exact", "Count 3\n", 3, ""},
        {"CrLf", "Count 3\r\n", 3, ""},
        {"LoneCrIsWhiteSpace", "\rCount\r3\rCount 4\n", 3, ""},
        {"CrCrLf", "Count\r\r\n", kKept, Failed("result == 1")},
        {"WhiteSpaceInFront", "\t \v\f\r Count 3\n", 3, ""},
        {"WhiteSpaceBehind", "Count \t\v\f\r 3\n", 3, ""},
        {"TabBehind", "Count\t3\n", 3, ""},
        {"VerticalTabBehind", "Count\v3\n", 3, ""},
        {"FormFeedBehind", "Count\f3\n", 3, ""},
        {"LineEndBehind", "Count\n", kKept, Failed("result == 1")},
        {"LastLineWithoutEnd", "Count 3", 3, ""},
        {"LabelAloneAtTheEnd", "Count", kKept, Missing("Count", 1, "Count")},
        {"Case", "count 3\n", kKept, Missing("Count", 1, "count 3\n")},
        {"LongerLabel", "CountMax 3\r\n", kKept, Missing("Count", 1, "CountMax 3\n")},
        {"ShorterLabel", "Coun 3\n", kKept, Missing("Count", 1, "Coun 3\n")},
        {"LabelFurtherBehind", "a Count 3\n", kKept, Missing("Count", 1, "a Count 3\n")},
        {"OtherCharacterBehind", "Count=3\n", kKept, Missing("Count", 1, "Count=3\n")},
        {"NoBreakSpaceBehind",
         "Count\xC2\xA0"
         "3\n",
         kKept,
         Missing("Count", 1,
                 "Count\xC2\xA0"
                 "3\n")},
        {"BlankLine", "\nCount 3\n", kKept, Missing("Count", 1, "\n")},
        {"NoLine", "", kKept, Missing("Count", 1, "")},
        {"NulInFront", "\0Count 3\n"s, kKept, Missing("Count", 1, "")},
        {"NulInLabel", "Cou\0nt 3\n"s, kKept, Missing("Count", 1, "Cou")},
        {"NulBehindLabel", "Count\0 3\n"s, kKept, Missing("Count", 1, "Count")},
        {"NulInFrontOfValue", "Count \0 3\n"s, kKept, Failed("result == 1")},
        {"NulBehindValue", "Count 3\0 4\n"s, 3, ""},
        {"SubstituteBehindLabel",
         "Count\x1A"
         "3\n",
         kKept,
         Missing("Count", 1,
                 "Count\x1A"
                 "3\n")},
        {"SubstituteBehindValue", "Count 3\x1A\n", 3, ""},
        {"IllFormed", "\xFF\xC0\xAF\xE2\x82 \xED\xA0\xBD\n", kKept,
         Missing("Count", 1, replacements.substr(0, 12) + " " + replacements.substr(12) + "\n")},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.name);
        std::int32_t value = kKept;
        EXPECT_EQ(Read(c.lines, [&](Archive& archive) { archive.ReadInt(u"Count", value); }), c.reports);
        EXPECT_EQ(value, c.expected);
        if (c.reports.find("missing") != std::string::npos || c.lines.back() != '\n')
            continue;
        Read(c.lines + "Next 5\n", [&](Archive& archive) { // the line is used up with all that stands in it
            archive.ReadInt(u"Count", value);
            archive.ReadInt(u"Next", value);
        });
        EXPECT_EQ(value, 5);
    }
}

TEST_F(TextLabelTest, FileMayBeAnyUnicode) {
    const struct {
        const char* name;
        std::string file;
        std::u16string expected;
    } kCases[] = {
        {"Plain", "TXT\nName \"\xF0\x9F\x98\x80\"\nCount 3\n", u"\xD83D\xDE00"},
        {"Mark", "\xEF\xBB\xBFTXT\r\nName \"\xC3\xA9\"\r\nCount 3\r\n", u"\u00E9"},
        {"Utf16", Utf16(u"TXT\r\nName \"\u00E9\xD83D\xDE00\"\r\nCount 3\r\n"), u"\u00E9\xD83D\xDE00"},
        {"Utf16LoneHalves", Utf16(u"TXT\nName \"\xDE00\xD83D-\xD83D\"\nCount 3\n"), u"\uFFFD\uFFFD-\uFFFD"},
        {"Utf16Substitute", Utf16(u"TXT\nName \"\x1A\"\nCount 3"), u"\x1A"},
        {"Utf16CutInAUnit", Utf16(u"TXT\nName \"a\"\nCount 3") + '\n', u"a"},
        {"IllFormed", "TXT\nName \"\xFF|\xC0\xAF|\xE2\x82|\xED\xA0\xBD|\x1A\"\nCount 3\n",
         u"\uFFFD|\uFFFD\uFFFD|\uFFFD|\uFFFD\uFFFD\uFFFD|\x1A"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.name);
        FixedString<20> name;
        std::int32_t count = kKept;
        EXPECT_EQ(ReadFile(c.file,
                           [&](Archive& archive) {
                               ReadValue(archive, u"Name", name);
                               archive.ReadInt(u"Count", count);
                           }),
                  "");
        EXPECT_EQ(name.GetView(), c.expected);
        EXPECT_EQ(count, 3);
    }
}

TEST_F(TextLabelTest, LineIsOfferedUntilItIsTaken) {
    const struct {
        const char* name;
        const char* lines;
        std::vector<Label> labels;
        std::vector<std::int32_t> values;
        std::string reports;
    } kCases[] = {
        {"OneMiss", "B 2\n", {u"A", u"B"}, {kKept, 2}, Missing("A", 1, "B 2\n")},
        {"TwoMissesInARow",
         "C 3\nD 4\n",
         {u"A", u"B", u"C", u"E", u"D"},
         {kKept, kKept, 3, kKept, 4},
         Missing("A", 1, "C 3\n") + Missing("B", 2, "C 3\n") + Missing("E", 4, "D 4\n")},
        {"NothingIsMatchedTwice", "A 1\n", {u"A", u"A"}, {1, kKept}, Missing("A", 2, "")},
        {"EveryLabelMissesAtTheEnd",
         "A 1",
         {u"A", u"B", u"C", u"B"},
         {1, kKept, kKept, kKept},
         Missing("B", 2, "") + Missing("C", 3, "") + Missing("B", 4, "")},
        {"WrongOrder",
         "B 2\nA 1\n",
         {u"A", u"B", u"C"},
         {kKept, 2, kKept},
         Missing("A", 1, "B 2\n") + Missing("C", 3, "A 1\n")},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.name);
        std::vector<std::int32_t> values(c.labels.size(), kKept);
        EXPECT_EQ(Read(c.lines,
                       [&](Archive& archive) {
                           for (std::size_t i = 0; i < values.size(); ++i)
                               archive.ReadInt(c.labels[i], values[i]);
                       }),
                  c.reports);
        EXPECT_EQ(values, c.values);
    }
}

TEST_F(TextLabelTest, RowsOfAMatrixAreNoLookUps) {
    Matrix33 matrix;
    std::int32_t value = kKept;
    EXPECT_EQ(Read("Frame\n [ 1 0 0 ]\nCount [ 0 1 0 ]\n [ 0 0 1 ]\nCount 3\n",
                   [&](Archive& archive) {
                       archive.ReadMatrix33(u"Frame", matrix);
                       archive.ReadInt(u"Other", value);
                       archive.ReadInt(u"Count", value);
                   }),
              Failed("result == 3") + Missing("Other", 2, "Count 3\n"));
    EXPECT_EQ(value, 3);
}

TEST_F(TextLabelTest, MissingObjectIsNotLoaded) {
    class Object final : public Archivable {
    public:
        void Load(Archive& archive, void* context) override {
            m_Context = context;
            Load(archive);
        }
        void Load(Archive& archive) override {
            archive.ReadInt(u"A", m_Value);
            archive.ReadInt(u"B", m_Value);
        }
        void Save(Archive&) const override {}

        void* m_Context = nullptr;
        std::int32_t m_Value = kKept;
    };
    Object objects[4];
    EXPECT_EQ(Read("A 1\nB 2\nIn\n\tA 3\n\tB 4\nIn x\nA 5\nB 6\n",
                   [&](Archive& archive) {
                       archive.ReadLabeledObject(u"In", objects[0]);
                       archive.ReadLabeledObject(u"In", objects[1], this);
                       archive.ReadObject(objects[2]);
                       archive.ReadLabeledObject(u"In", objects[0]);
                       archive.ReadLabeledObject(u"In", objects[3], this);
                   }),
              Missing("In", 1, "A 1\n") + Missing("In", 2, "A 1\n"));
    EXPECT_EQ(objects[0].m_Value, 4);
    EXPECT_EQ(objects[1].m_Value, kKept);
    EXPECT_EQ(objects[1].m_Context, nullptr);
    EXPECT_EQ(objects[2].m_Value, 2);
    EXPECT_EQ(objects[3].m_Value, 6);
    EXPECT_EQ(objects[3].m_Context, this);
}

} // namespace
} // namespace Corvid
