#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "Tests/Engine/Archive/TextArchiveFixture.h"

namespace Corvid {
namespace {

using namespace std::string_literals;

using TextStringTest = TextArchiveFixture;

constexpr int kRoomy = 64;

TEST_F(TextStringTest, ValueStandsBetweenQuotes) {
    const std::string unquoted = Failed("*stringSrc == _T('\"')");
    const std::string tooLong = Failed("numCharsCopied < bufferSize");
    const struct {
        const char* name;
        std::string text; // behind "Name "
        int capacity;
        std::u16string expected;
        std::string reports;
    } kCases[] = {
        {"Quoted", "\"Hull\"\n", kRoomy, u"Hull", ""},
        {"TwoQuotes", "\"\"\n", kRoomy, u"", ""},
        {"CapacityOfOne", "\"\"\n", 1, u"", ""},
        {"BehindTheQuote", "\"Hull\" \"x\" y\n", kRoomy, u"Hull", ""},
        {"BlanksInside", "\t \" a\tb\rc \"\n", kRoomy, u" a\tb\rc ", ""},
        {"NoEscapes", "\"a\\\"b\"\n", kRoomy, u"a\\", ""},
        {"LastLine", "\"Hull\"", kRoomy, u"Hull", ""},

        {"Unquoted", "Hull\"x\"\n", kRoomy, u"ull", unquoted},
        {"UnquotedPair",
         "\xF0\x9F\x98\x80"
         "b\"\n",
         kRoomy,
         u"\xDE00"
         u"b",
         unquoted},
        {"UnquotedLetters", "\xC3\xA9\xC3\xA9\"\n", kRoomy, u"\u00E9", unquoted},
        {"UnquotedToTheEnd", "Hull\r\n", kRoomy, u"ull", unquoted + Unterminated("ull\n", 1, "Name Hull\n")},
        {"NoValue", "\r\n", kRoomy, u"", unquoted + Unterminated("", 1, "Name \n")},

        {"Unterminated", "\"ab\n", kRoomy, u"ab", Unterminated("ab\n", 1, "Name \"ab\n")},
        {"UnterminatedCrLf", "\"ab\r\n", kRoomy, u"ab", Unterminated("ab\n", 1, "Name \"ab\n")},
        {"UnterminatedCrCrLf", "\"ab\r\r\n", kRoomy, u"ab\r", Unterminated("ab\r\n", 1, "Name \"ab\r\n")},
        {"UnterminatedLastLine", "\"ab", kRoomy, u"ab", Unterminated("ab", 1, "Name \"ab")},
        {"QuoteAlone", "\"\n", kRoomy, u"", Unterminated("\n", 1, "Name \"\n")},
        {"UnquotedPair", "\xF0\x9F\x98\x80 b\n", kRoomy, u"\xDE00 b",
         unquoted + Unterminated("\xEF\xBF\xBD b\n", 1, "Name \xF0\x9F\x98\x80 b\n")},
        {"Nul", "\"ab\0cd\"\n"s, kRoomy, u"ab", Unterminated("ab", 1, "Name \"ab")},
        {"NulBehindQuote", "\"ab\"\0\"\n"s, kRoomy, u"ab", ""},

        {"BelowCapacity", "\"Hull\"\n", 5, u"Hull", ""},
        {"AtCapacity", "\"Hulls\"\n", 5, u"Hull", tooLong},
        {"AboveCapacity", "\"Hulls and more\"\n", 5, u"Hull", tooLong},
        {"AboveCapacityUnterminated", "\"Hulls and more\n", 5, u"Hull", tooLong},
        {"AboveCapacityUnquoted", "Hulls and more\n", 5, u"ulls", unquoted + tooLong},
        {"AtCapacityOfOne", "\"a\"\n", 1, u"", tooLong},
        {"AtCapacityUnterminated", "\"Hull\n", 5, u"Hull", Unterminated("Hull\n", 1, "Name \"Hull\n")},
        {"PairBelowCapacity", "\"ab\xF0\x9F\x98\x80\"\n", 5, u"ab\xD83D\xDE00", ""},
        {"PairAcrossCapacity", "\"abc\xF0\x9F\x98\x80\"\n", 5, u"abc\xD83D", tooLong},
        {"PairAtCapacity", "\"abcd\xF0\x9F\x98\x80\"\n", 5, u"abcd", tooLong},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.name);
        std::u16string buffer(kRoomy, u'#');
        std::int32_t next = 0;
        const bool isLastLine = c.text.back() != '\n';
        EXPECT_EQ(Read("Name " + c.text + (isLastLine ? "" : "Next 3"),
                       [&](Archive& archive) {
                           archive.ReadString(u"Name", buffer.data(), c.capacity);
                           if (!isLastLine)
                               archive.ReadInt(u"Next", next);
                       }),
                  c.reports);
        EXPECT_EQ(std::u16string(buffer.c_str()), c.expected);
        EXPECT_EQ(buffer.find_first_not_of(u'#', static_cast<std::size_t>(c.capacity)), std::u16string::npos);
        EXPECT_EQ(next, isLastLine ? 0 : 3);
    }
}

TEST_F(TextStringTest, MissingLabelLeavesTheBufferAlone) {
    std::u16string buffer = u"kept";
    EXPECT_EQ(Read("name \"x\"\n", [&](Archive& archive) { archive.ReadString(u"Name", buffer.data(), 4); }),
              Missing("Name", 1, "name \"x\"\n"));
    EXPECT_EQ(buffer, u"kept");
}

} // namespace
} // namespace Corvid
