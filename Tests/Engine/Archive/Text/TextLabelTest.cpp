#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "Tests/Engine/Archive/TextArchiveFixture.h"

namespace Corvid {
namespace {

using namespace std::string_literals;

constexpr std::int32_t kKept = -7;

class TextLabelTest : public TextArchiveFixture {
protected:
    // Reads "Count" from the line, then "Next" from a line behind it, if the first is used up with all it holds.
    void ExpectCount(const std::string& line, std::int32_t expected, const std::string& reports) {
        SCOPED_TRACE(line);
        const bool isUsedUp = line.ends_with('\n') && reports.find("missing") == reports.npos;
        std::int32_t next = isUsedUp ? kKept : 5;
        EXPECT_EQ(Read(line + (isUsedUp ? "Next 5" : ""),
                       [&](Archive& archive) {
                           std::int32_t value = kKept;
                           archive.ReadInt(u"Count", value);
                           EXPECT_EQ(value, expected);
                           if (isUsedUp)
                               archive.ReadInt(u"Next", next);
                       }),
                  reports);
        EXPECT_EQ(next, 5);
    }
};

std::string Utf16(std::u16string_view text) {
    std::string bytes = "\xFF\xFE";
    for (const char16_t unit : text)
        bytes.append({static_cast<char>(unit & 0xFF), static_cast<char>(unit >> 8)});
    return bytes;
}

TEST_F(TextLabelTest, LineIsTakenByItsWholeLabel) {
    for (const std::string& line :
         {"Count 3\n"s, "Count 3\r\n"s, "Count 3"s, "\t \v\f\r Count 3\n"s, "Count \t\v\f\r 3\n"s, "Count\t3\n"s,
          "Count\v3\n"s, "Count\f3\n"s, "\rCount\r3\rCount 4\n"s, "Count 3\0 4\n"s, "Count 3\x1A\n"s})
        ExpectCount(line, 3, "");
    for (const std::string& line : {"Count\n"s, "Count\r\n"s, "Count\r\r\n"s, "Count \0 3\n"s})
        ExpectCount(line, kKept, Failed("result == 1"));
    for (const std::string& line : {"count 3\n"s, "CountMax 3\n"s, "Coun 3\n"s, "a Count 3\n"s, "Count=3\n"s,
                                    "Count\xC2\xA0 3\n"s, "\n"s, "Count\x1A 3\n"s, "Count"s, ""s})
        ExpectCount(line, kKept, Missing("Count", 1, line));
    ExpectCount("\nCount 3\n", kKept, Missing("Count", 1, "\n"));
    ExpectCount("CountMax 3\r\n", kKept, Missing("Count", 1, "CountMax 3\n")); // the line as it is held
    ExpectCount("\0Count 3\n"s, kKept, Missing("Count", 1, ""));
    ExpectCount("Cou\0nt 3\n"s, kKept, Missing("Count", 1, "Cou"));
    ExpectCount("Count\0 3\n"s, kKept, Missing("Count", 1, "Count"));
    const std::string mark = "\xEF\xBF\xBD";
    ExpectCount("\xFF|\xC0\xAF|\xE2\x82|\xED\xA0\xBD\n", kKept,
                Missing("Count", 1, mark + '|' + mark + mark + '|' + mark + '|' + mark + mark + mark + '\n'));
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
        void Load(Archive& archive) override { archive.ReadIntPair(u"A", m_Value, m_Value); }
        void Save(Archive&) const override {}

        void* m_Context = nullptr;
        std::int32_t m_Value = kKept;
    };
    Object objects[4];
    EXPECT_EQ(Read("A [ 1 , 2 ]\nIn\n\tA [ 3 , 4 ]\nIn x\nA [ 5 , 6 ]\n",
                   [&](Archive& archive) {
                       archive.ReadLabeledObject(u"In", objects[0]);
                       archive.ReadLabeledObject(u"In", objects[1], this);
                       archive.ReadObject(objects[2]);
                       archive.ReadLabeledObject(u"In", objects[0]);
                       archive.ReadLabeledObject(u"In", objects[3], this);
                   }),
              Missing("In", 1, "A [ 1 , 2 ]\n") + Missing("In", 2, "A [ 1 , 2 ]\n"));
    EXPECT_TRUE(objects[0].m_Value == 4 && objects[2].m_Value == 2 && objects[3].m_Value == 6);
    EXPECT_TRUE(objects[1].m_Value == kKept && objects[1].m_Context == nullptr && objects[3].m_Context == this);
}

} // namespace
} // namespace Corvid
