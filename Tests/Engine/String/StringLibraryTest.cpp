#include "Engine/String/StringLibrary.h"

#include <gtest/gtest.h>

#include <string>

#include "Engine/String/FixedString.h"
#include "Tests/Support/ReportLog.h"

namespace Corvid {
namespace {

constexpr const char* kTooLong = "GetLength( source ) < destination.m_BufferSize";
constexpr const char* kSame = "destination.m_Buffer != source";
constexpr const char* kNoRoom = "destination.m_BufferSize >= 1";

TEST(StringLibraryTest, CompareIsExact) {
    struct Case {
        const char16_t* a;
        const char16_t* b;
        int result;
    };
    const Case kCases[] = {
        {u"", u"", 0},        {u"mesh", u"mesh", 0},     {u"mesh", u"Mesh", 1},          {u"a", u"ab", -1},
        {u"ab", u"a", 1},     {u"a\0b", u"a\0c", 0},     {u"z", u"\u00E9", -1},          {u" a", u"a", -1},
        {u"", u"\uFFFF", -1}, {u"\uE000", u"\xD800", 1}, {u"\U0001F680", u"\uFF00", -1}, // by unit
    };
    ReportLog reports;
    for (const Case& row : kCases) {
        EXPECT_EQ(Compare(row.a, row.b), row.result);
        EXPECT_EQ(Compare(row.b, row.a), -row.result);
    }
    EXPECT_EQ(reports.Take(), "");
    EXPECT_EQ(Compare(nullptr, u"a"), -1);
    EXPECT_EQ(reports.Count("s1 != NULL"), 1);
    EXPECT_EQ(Compare(nullptr, nullptr), 0);
    EXPECT_EQ(reports.Count("s2 != NULL"), 1);
    EXPECT_EQ(reports.GetTexts().size(), 3u);
}

TEST(StringLibraryTest, CopyStaysInBounds) {
    struct Case {
        std::u16string source;
        int size;
        std::u16string buffer; // five units, '#' where nothing was written
        std::string check;
    };
    const Case kCases[] = {
        {u"abc", 4, {u"abc\0#", 5}, ""},        {u"", 1, {u"\0####", 5}, ""},           {u"ab", 4, {u"ab\0##", 5}, ""},
        {u"abcd", 4, {u"abc\0#", 5}, kTooLong}, {u"abcd", 1, {u"\0####", 5}, kTooLong}, {u"a", 0, u"#####", kNoRoom},
        {u"a", -1, u"#####", kNoRoom},
    };
    for (const Case& row : kCases) {
        ReportLog reports;
        std::u16string buffer(5, u'#');
        CopyString({buffer.data(), row.size}, row.source.c_str());
        EXPECT_EQ(buffer, row.buffer) << row.size;
        EXPECT_EQ(reports.GetTexts().size(), row.check.empty() ? 0u : 1u);
        EXPECT_EQ(reports.Count(row.check), row.check.empty() ? 0 : 1);
    }
    ReportLog reports;
    char16_t same[] = u"abc";
    CopyString({same, 4}, same);
    EXPECT_EQ(std::u16string(same), u"abc");
    EXPECT_EQ(reports.Count(kSame), 1);
}

TEST(StringLibraryTest, FixedStringsKeepWhatFits) {
    ReportLog reports;
    FixedString<4> text(u"abc");
    const FixedString<4> copy = text;
    text = copy.GetText();
    text = copy;
    text = *&text; // itself is no reason to report
    EXPECT_EQ(text, u"abc");
    EXPECT_EQ(reports.Take(), "");
    text = std::u16string_view(u"wxyz12");
    EXPECT_EQ(text, u"wxy");
    EXPECT_EQ(reports.Count(kTooLong), 1);
    text = text.GetText();
    EXPECT_EQ(text, u"wxy");
    EXPECT_EQ(reports.Count(kSame), 1);
}

} // namespace
} // namespace Corvid
