#include "Engine/String/Unicode.h"

#include <gtest/gtest.h>

namespace Corvid {
namespace {

TEST(UnicodeTest, IllFormedPartsBecomeOneReplacementEach) {
    struct Case {
        std::string bytes;
        std::u16string units;
    };
    const Case kCases[] = {
        {"", u""},
        {{"a\0z", 3}, {u"a\0z", 3}},
        {"\x7F\xC2\x80\xDF\xBF", u"\x7F\x80\u07FF"},
        {"\xE0\xA0\x80\xED\x9F\xBF\xEE\x80\x80\xEF\xBF\xBF", u"\u0800\uD7FF\uE000\uFFFF"},
        {"\xF0\x90\x80\x80\xF4\x8F\xBF\xBF", u"\U00010000\U0010FFFF"},
        {"\xEF\xBB\xBFx", u"\uFEFFx"}, // a mark inside a text is a character
        {"\xFF", u"\uFFFD"},
        {"\x80\xBF", u"\uFFFD\uFFFD"},
        {"\xC0\xAF", u"\uFFFD\uFFFD"},
        {"\xE2\x82", u"\uFFFD"},
        {"\xE2\x82z", u"\uFFFDz"},
        {"\xE2\x82\xE2\x82\xAC", u"\uFFFD\u20AC"},
        {"\xC2\xC2\xA9", u"\uFFFD\u00A9"},
        {"\xE0\x9F\xBF", u"\uFFFD\uFFFD\uFFFD"},
        {"\xED\xA0\xBD", u"\uFFFD\uFFFD\uFFFD"},
        {"\xF0\x9F\x9A", u"\uFFFD"},
        {"\xF0\x9F\x9A\"", u"\uFFFD\""},
        {"\xF0\x8F\xBF\xBF", u"\uFFFD\uFFFD\uFFFD\uFFFD"},
        {"\xF4\x90\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD"},
        {"\xF5\x80", u"\uFFFD\uFFFD"},
    };
    for (const Case& row : kCases)
        EXPECT_EQ(ToUtf16(row.bytes), row.units) << ::testing::PrintToString(row.bytes);
}

TEST(UnicodeTest, LoneSurrogatesBecomeReplacements) {
    EXPECT_EQ(ToUtf8(u"\xD83D"), "\uFFFD");
    EXPECT_EQ(ToUtf8(u"\xDE80x"), "\uFFFDx");
    EXPECT_EQ(ToUtf8(u"\xD83D\xD83D\xDE80"), "\uFFFD\U0001F680");
    EXPECT_EQ(ToUtf8(u"\xDE80\xD83D"), "\uFFFD\uFFFD");
    EXPECT_EQ(ToUtf8(u"\U0001F680"), "\xF0\x9F\x9A\x80");
}

TEST(UnicodeTest, EveryCharacterRoundTrips) {
    for (char32_t character = 0; character < 0x110000; ++character) {
        if (character >= 0xD800 && character < 0xE000)
            continue;
        char bytes[kMaxUtf8Bytes];
        char* const end = EncodeUtf8(bytes, character);
        const std::u16string units = ToUtf16({bytes, end});
        ASSERT_EQ(units.size(), character < 0x10000 ? 1u : 2u) << static_cast<std::uint32_t>(character);
        const char16_t* position = units.data();
        ASSERT_EQ(DecodeUtf16(position, units.data() + units.size()), character);
        ASSERT_EQ(ToUtf8(units), std::string(bytes, end));
    }
}

} // namespace
} // namespace Corvid
