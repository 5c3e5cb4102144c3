#include "Corvid/Svg/BrushSheet.h"

#include <gtest/gtest.h>

#include <regex>
#include <string>

#include "Corvid/Svg/SvgText.h"
#include "Tests/Support/ArchiveFixture.h"
#include "Tests/Support/SpelledFile.h"

namespace Corvid {
namespace {

constexpr const char* kStates[] = {"Disabled", "Pressed", "CursorOver", "Focused", "Normal"};

class BrushSheetTest : public ArchiveFixture {
protected:
    static void SpellMargins(SpelledFile& file, const char* label, int all) {
        file.Begin(label).Int("left", all).Int("right", all + 1).Int("top", all + 2).Int("bottom", all + 3).End();
    }

    std::string Sheet(const SpelledFile& file) {
        BrushSystem::BrushSet set;
        Load(file.GetBinary(), set);
        std::string sheet = MakeBrushSheet(set, u"Panels <1>");
        BrushSystem::ReleaseTextures(set);
        return sheet;
    }

    // Elements nest, attributes are quoted, and what is between them is text.
    static void ExpectWellFormed(const std::string& sheet) {
        static const std::regex kToken(R"(<\?xml[^>]*\?>|<(/?)([a-z]+)((?: [a-zA-Z0-9-]+="[^"<]*")*)(/?)>|[^<]+)");
        std::vector<std::string> open;
        std::size_t matched = 0;
        for (std::sregex_iterator token(sheet.begin(), sheet.end(), kToken), end; token != end; ++token) {
            ASSERT_EQ(static_cast<std::size_t>(token->position()), matched);
            matched += static_cast<std::size_t>(token->length());
            if (!(*token)[2].matched || (*token)[4].length() != 0)
                continue;
            if ((*token)[1].length() == 0) {
                open.push_back((*token)[2]);
            } else {
                ASSERT_FALSE(open.empty());
                EXPECT_EQ(open.back(), (*token)[2]);
                open.pop_back();
            }
        }
        EXPECT_EQ(matched, sheet.size());
        EXPECT_TRUE(open.empty());
        EXPECT_FALSE(std::regex_search(sheet, std::regex("&(?!amp;|lt;|gt;|quot;|#)")));
    }
};

TEST_F(BrushSheetTest, DrawsStatesAndMarginsToScale) {
    SpelledFile file;
    file.Bool("onlyLoadOnDemand", false).Int("brushCount", 2);
    file.Begin("brush").String("name", "Frame").String("content", "Margins");
    SpellMargins(file, "stretchMargins", 3);
    SpellMargins(file, "contentMargins", 10);
    file.String("fileName", "panel.tga").Rect("pixelBox", 5, 6, 100, 40).End();
    file.Begin("brush").String("name", "Button").String("content", "States");
    for (int i = 0; i < 5; ++i)
        file.Begin(kStates[i]).String("fileName", "button.tga").Rect("pixelBox", i * 10, 0, 10 + i, 20).End();
    file.End();
    const std::string sheet = Sheet(file);
    ExpectWellFormed(sheet);
    for (const char* part : {"All states: panel.tga", "100 x 40 at 5, 6", "width=\"100\" height=\"40\"",
                             "stretch left 3, right 4, top 5, bottom 6", "content left 10, right 11, top 12, bottom 13",
                             "width=\"14\" height=\"20\"", "CursorOver: button.tga", "<title>Panels &lt;1&gt;</title>"})
        EXPECT_NE(sheet.find(part), sheet.npos) << part;
    // Eight lines of the margins, at their distances from the edges.
    std::smatch frame;
    ASSERT_TRUE(std::regex_search(sheet, frame, std::regex("<rect x=\"(\\d+)\" y=\"(\\d+)\" width=\"100\"")));
    const int x = std::stoi(frame[1]), y = std::stoi(frame[2]);
    for (const int at : {x + 3, x + 96, x + 10, x + 89})
        EXPECT_NE(sheet.find("<line x1=\"" + std::to_string(at) + "\" y1=\"" + std::to_string(y) + "\""), sheet.npos)
            << at;
    for (const int at : {y + 5, y + 34, y + 12, y + 27})
        EXPECT_NE(sheet.find("y1=\"" + std::to_string(at) + "\" x2=\"" + std::to_string(x + 100) + "\""), sheet.npos)
            << at;
}

TEST_F(BrushSheetTest, NamesAreTextWhateverTheyHold) {
    const struct {
        std::u16string_view text;
        const char* escaped;
    } kCases[] = {{u"<script>alert(\"1\")</script>", "&lt;script&gt;alert(&quot;1&quot;)&lt;/script&gt;"},
                  {u"a&b\r\n\t", "a&amp;b&#13;&#10;&#9;"},
                  {u"\u0001\u001f\ufffe\uffff", "\uFFFD\uFFFD\uFFFD\uFFFD"},
                  {u"\u00e9\U0001F680", "\u00e9\U0001F680"}};
    for (const auto& each : kCases)
        EXPECT_EQ(SvgText(each.text), each.escaped);
    const char16_t halfAPair[] = {0xD800, u'x', 0};
    EXPECT_EQ(SvgText(halfAPair), "\uFFFDx");
}

TEST_F(BrushSheetTest, BoxesThatNoTextureHasAreToldOnly) {
    SpelledFile file;
    file.Bool("onlyLoadOnDemand", false)
        .Int("brushCount", 1)
        .Begin("brush")
        .String("name", "<&>")
        .String("content", "Margins");
    SpellMargins(file, "stretchMargins", 2147483640);
    SpellMargins(file, "contentMargins", -2147483647);
    file.String("fileName", "\"'>").Rect("pixelBox", 0, 0, 2147483647, -5).End();
    const std::string sheet = Sheet(file);
    ExpectWellFormed(sheet);
    EXPECT_NE(sheet.find("2147483647 x -5 at 0, 0 (not drawn)"), sheet.npos);
    EXPECT_EQ(sheet.find("width=\"2147483647\""), sheet.npos);
}

} // namespace
} // namespace Corvid
