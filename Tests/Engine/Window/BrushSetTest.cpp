#include "Engine/Window/BrushSystem.h"

#include <array>
#include <limits>
#include <string>
#include <vector>

#include "Tests/Support/ArchiveFixture.h"
#include "Tests/Support/ExpectWords.h"
#include "Tests/Support/SpelledFile.h"

namespace Corvid {
namespace {

struct State {
    std::string m_File = "t.tga";
    std::array<std::int32_t, 4> m_Box = {1, 2, 3, 4};
};

// A brush as a file spells it: margins and states as they are given, whatever the content word says.
struct SpelledBrush {
    const char* m_Content;
    std::vector<std::int32_t> m_Margins; // 8 or none
    std::vector<State> m_States;         // 5, or 1 inline
};

constexpr const char* kMarginLabels[] = {"left", "right", "top", "bottom"};
constexpr const char* kStateLabels[] = {"Disabled", "Pressed", "CursorOver", "Focused", "Normal"};

void Spell(SpelledFile& file, const State& state) {
    file.String("fileName", state.m_File);
    file.Rect("pixelBox", state.m_Box[0], state.m_Box[1], state.m_Box[2], state.m_Box[3]);
}

SpelledFile Spell(const std::vector<SpelledBrush>& brushes) {
    SpelledFile file;
    file.Bool("onlyLoadOnDemand", true).Int("brushCount", static_cast<std::int32_t>(brushes.size()));
    for (const SpelledBrush& brush : brushes) {
        file.Begin("brush").String("name", "Panel").String("content", brush.m_Content);
        for (std::size_t i = 0; i < brush.m_Margins.size(); ++i) {
            if (i % 4 == 0)
                file.Begin(i == 0 ? "stretchMargins" : "contentMargins");
            file.Int(kMarginLabels[i % 4], brush.m_Margins[i]);
            if (i % 4 == 3)
                file.End();
        }
        for (std::size_t i = 0; i < brush.m_States.size(); ++i) {
            if (brush.m_States.size() > 1)
                file.Begin(kStateLabels[i]);
            Spell(file, brush.m_States[i]);
            if (brush.m_States.size() > 1)
                file.End();
        }
        file.End();
    }
    return file;
}

class BrushSetTest : public ArchiveFixture {
protected:
    // Through a set of its own, whose textures are all returned at the end.
    std::string Convert(const std::string& bytes, ArchiveFormat format) {
        BrushSystem::BrushSet set;
        Load(bytes, set);
        std::string converted = Save(format, set);
        BrushSystem::ReleaseTextures(set);
        EXPECT_EQ(set.GetTextures().GetReferenceCount(), 0u);
        EXPECT_EQ(set.GetTextures().GetTextureCount(), 0u);
        return converted;
    }
    std::string ConvertText(const std::string& lines) { return Convert("TXT\n" + lines, ArchiveFormat::Text); }
};

constexpr std::int32_t kLowest = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t kHighest = std::numeric_limits<std::int32_t>::max();

TEST_F(BrushSetTest, EveryContentIsAFixedPointInBothEncodings) {
    const State a{"UI/Frame.tga", {0, 0, 64, 32}};
    const State b{"UI\\frame.TGA", {-8, 16, 0, -32}};
    const State wrapping{"x", {kHighest, kLowest, kHighest, kLowest}};
    const State none{"", {0, 0, 0, 0}};
    const struct {
        const char* name;
        std::vector<SpelledBrush> brushes;
    } kCases[] = {
        {"NoBrush", {}},
        {"Simple", {{"Simple", {}, {a}}}},
        {"SimpleWithoutTexture", {{"Simple", {}, {none}}}},
        {"BoxThatWraps", {{"Simple", {}, {wrapping}}}},
        {"Margins", {{"Margins", {1, 2, 3, 4, 5, 6, 7, kLowest}, {b}}}},
        {"States", {{"States", {}, {a, b, a, wrapping, none}}}},
        {"MarginsAndStates", {{"MarginsAndStates", {0, 0, 0, 0, -1, 0, 0, 0}, {a, a, a, a, b}}}},
        {"SeveralBrushes",
         {{"States", {}, {a, b, b, b, b}}, {"Simple", {}, {b}}, {"Margins", {1, 0, 0, 0, 0, 0, 0, 0}, {a}}}},
    };
    for (const auto& c : kCases) {
        const SpelledFile file = Spell(c.brushes);
        for (const std::string& source : {file.GetText(), file.GetBinary()}) {
            EXPECT_EQ(Convert(source, ArchiveFormat::Text), file.GetText()) << c.name;
            EXPECT_EQ(Convert(source, ArchiveFormat::Binary), file.GetBinary()) << c.name;
        }
    }
    EXPECT_EQ(m_Reports.Take(), "");
}

TEST_F(BrushSetTest, FileHoldsTheseBytes) {
    const std::string text = "\xEF\xBB\xBFTXT\r\nonlyLoadOnDemand FALSE\r\nbrushCount 1\r\nbrush\r\n\tname \"n\"\r\n"
                             "\tcontent \"Simple\"\r\n\tfileName \"t\"\r\n\tpixelBox [ 1 , 2 , 3 , -4 ]\r\n";
    const std::string binary("BIN\n\0\1\0\0\0\1\0\0\0n\0\6\0\0\0S\0i\0m\0p\0l\0e\0\1\0\0\0t\0"
                             "\1\0\0\0\2\0\0\0\3\0\0\0\xFC\xFF\xFF\xFF",
                             53);
    EXPECT_EQ(Convert(text, ArchiveFormat::Binary), binary);
    EXPECT_EQ(Convert(binary, ArchiveFormat::Text), text);
}

TEST_F(BrushSetTest, ContentComesFromTheData) {
    const std::vector<State> kSameStates(5);
    const std::vector<std::int32_t> kNoMargins(8);
    struct Case {
        std::string name;
        const char* content;
        std::vector<std::int32_t> margins;
        std::vector<State> states;
    };
    std::vector<Case> cases = {{"NoDifference", "Simple", kNoMargins, kSameStates}};
    for (std::size_t i = 0; i < kNoMargins.size(); ++i) {
        Case& c = cases.emplace_back(Case{"Margin" + std::to_string(i), "Margins", kNoMargins, kSameStates});
        c.margins[i] = -1;
    }
    for (std::size_t i = 0; i < kSameStates.size(); ++i) {
        for (const char* otherName : {"T.tga", "t.tg", ""}) {
            Case& c = cases.emplace_back(
                Case{std::string(kStateLabels[i]) + " file " + otherName, "States", kNoMargins, kSameStates});
            c.states[i].m_File = otherName;
        }
        for (std::size_t edge = 0; edge < 4; ++edge) {
            Case& c = cases.emplace_back(
                Case{std::string(kStateLabels[i]) + " box " + std::to_string(edge), "States", kNoMargins, kSameStates});
            ++c.states[i].m_Box[edge];
        }
    }
    Case& both = cases.emplace_back(cases.back());
    both.content = "MarginsAndStates";
    both.margins[7] = 1;

    for (const Case& c : cases) {
        const std::string content = c.content;
        const bool keepsMargins = content.find("Margins") == 0;
        const bool keepsStates = content.find("States") != content.npos;
        const SpelledFile full = Spell({{"MarginsAndStates", c.margins, c.states}});
        const SpelledFile expected = Spell({{c.content, keepsMargins ? c.margins : std::vector<std::int32_t>(),
                                             keepsStates ? c.states : std::vector<State>(1)}});
        EXPECT_EQ(Convert(full.GetText(), ArchiveFormat::Text), expected.GetText()) << c.name;
        EXPECT_EQ(Convert(full.GetBinary(), ArchiveFormat::Binary), expected.GetBinary()) << c.name;
    }
    EXPECT_EQ(m_Reports.Take(), "");
}

TEST_F(BrushSetTest, ContentThatIsNoneReadsOneInlineState) {
    const struct {
        const char* name;
        const char* line;
        const char* report;
    } kCases[] = {
        {"LowerCase", "content \"simple\"\n", "Failed to convert 'simple' to an enum value.\n"},
        {"TrailingBlank", "content \"States \"\n", "Failed to convert 'States ' to an enum value.\n"},
        {"Empty", "content \"\"\n", "Failed to convert '' to an enum value.\n"},
        {"Invalid", "content \"Invalid\"\n", ""},
    };
    const std::string before = "onlyLoadOnDemand TRUE\nbrushCount 1\nbrush\nname \"Panel\"\n";
    const std::string after = "fileName \"t.tga\"\npixelBox [ 1 , 2 , 3 , 4 ]\n";
    const std::string saved = Spell({{"Simple", {}, {State()}}}).GetText();
    for (const auto& c : kCases) {
        EXPECT_EQ(ConvertText(before + c.line + after), saved) << c.name;
        EXPECT_EQ(m_Reports.Take(), c.report) << c.name;
    }

    EXPECT_EQ(ConvertText(before + after), saved);
    EXPECT_EQ(m_Reports.Count("Label: content\n"), 1);
    EXPECT_EQ(m_Reports.GetTexts().size(), 1u) << m_Reports.Take();
}

TEST_F(BrushSetTest, MissingFieldsKeepTheirDefaults) {
    const std::string empty = Spell({{"Simple", {}, {State{"", {0, 0, 0, 0}}}}}).GetText();
    EXPECT_EQ(ConvertText("onlyLoadOnDemand TRUE\nbrushCount 1\nbrush\nname \"Panel\"\ncontent \"MarginsAndStates\"\n"),
              empty);
    EXPECT_EQ(m_Reports.Count("missing Label"), 7) << "two margins, five states";
    EXPECT_EQ(m_Reports.GetTexts().size(), 7u) << m_Reports.Take();

    // What is there is read on, though parts are missing before it.
    State box{"", {9, 8, 7, 6}};
    EXPECT_EQ(ConvertText("onlyLoadOnDemand TRUE\nbrushCount 1\nbrush\nname \"Panel\"\ncontent \"Margins\"\n"
                          "contentMargins\ntop 5\npixelBox [ 9 , 8 , 7 , 6 ]\n"),
              Spell({{"Margins", {0, 0, 0, 0, 0, 0, 5, 0}, {box}}}).GetText());
}

TEST_F(BrushSetTest, CountsAreClaims) {
    constexpr int kAnyNumber = -1;
    const struct {
        const char* name;
        const char* line;
        int brushes;
        int missingLabels;
        const char* report;
    } kCases[] = {
        {"Zero", "brushCount 0\n", 0, 0, ""},
        {"Negative", "brushCount -1\n", 0, 0, "newMaxSize >= 0"},
        {"Lowest", "brushCount -2147483648\n", 0, 0, "newMaxSize >= 0"},
        {"Missing", "", 0, 1, "newMaxSize >= 0"},
        {"MoreThanThereAre", "brushCount 3\nbrush\nname \"n\"\n", 3, 3 + 2, ""},
        {"Huge", "brushCount 2147483647\nbrush\n", kAnyNumber, kAnyNumber, "'brushCount' claims 2147483647"},
    };
    for (const auto& c : kCases) {
        BrushSystem::BrushSet set;
        LoadText(std::string("onlyLoadOnDemand TRUE\n") + c.line, set);
        const int size = set.GetBrushes().GetSize();
        if (c.brushes != kAnyNumber) {
            EXPECT_EQ(size, c.brushes) << c.name;
            EXPECT_EQ(m_Reports.Count("missing Label"), c.missingLabels) << c.name;
        } else {
            EXPECT_GE(size, 4096) << c.name;
            EXPECT_LE(size, 4096 + 10) << c.name;
        }
        EXPECT_EQ(m_Reports.Count(c.report), *c.report == 0 ? c.missingLabels : 1) << c.name;
        EXPECT_NE(SaveText(set).find("brushCount " + std::to_string(size) + "\r\n"), std::string::npos) << c.name;
        m_Reports.Take();
    }
}

TEST_F(BrushSetTest, EveryStateOwnsAReference) {
    const State a{"a.tga", {}};
    const State b{"b.tga", {}};
    const State none{"", {}};
    const struct {
        const char* name;
        std::vector<SpelledBrush> brushes;
        std::size_t textures;
        std::size_t references;
    } kCases[] = {
        {"InlineStateStandsForAll", {{"Simple", {}, {a}}}, 1, 5},
        {"InlineStateWithoutTexture", {{"Simple", {}, {none}}}, 0, 0},
        {"StatesOfTheirOwn", {{"States", {}, {a, none, b, none, a}}}, 2, 3},
        {"BrushesShareTextures", {{"Simple", {}, {a}}, {"States", {}, {a, b, a, a, a}}}, 2, 10},
    };
    for (const auto& c : kCases) {
        BrushSystem::BrushSet set;
        Load(Spell(c.brushes).GetText(), set);
        Load(Spell(c.brushes).GetText(), set); // the brushes of the first load are gone, and their references
        EXPECT_EQ(set.GetTextures().GetTextureCount(), c.textures) << c.name;
        EXPECT_EQ(set.GetTextures().GetReferenceCount(), c.references) << c.name;
        BrushSystem::ReleaseTextures(set);
        EXPECT_EQ(set.GetTextures().GetReferenceCount(), 0u) << c.name;
        BrushSystem::ReleaseTextures(set);
        set.Clear();
        EXPECT_EQ(set.GetTextures().GetTextureCount(), 0u) << c.name;
        EXPECT_EQ(set.GetBrushes().GetSize(), 0) << c.name;
    }
    EXPECT_EQ(m_Reports.Take(), "");
}

TEST_F(BrushSetTest, StringsKeepWhatTheirCapacityHolds) {
    const struct {
        const char* label;
        std::size_t length;
        std::size_t kept;
    } kCases[] = {{"name", 127, 127}, {"name", 128, 127}, {"fileName", 259, 259}, {"fileName", 260, 259}};
    for (const auto& c : kCases) {
        const std::string start = '\t' + std::string(c.label) + " \"";
        std::string lines = "onlyLoadOnDemand TRUE\nbrushCount 1\nbrush\n";
        if (c.label == std::string("fileName"))
            lines += "name \"n\"\ncontent \"Simple\"\n";
        const std::string saved = ConvertText(lines + start + std::string(c.length, 'q') + "\"\n");
        EXPECT_NE(saved.find(start + std::string(c.kept, 'q') + "\"\r\n"), saved.npos) << c.label << c.length;
        EXPECT_EQ(m_Reports.Count("numCharsCopied < bufferSize"), c.length != c.kept) << c.label << c.length;
        m_Reports.Take();
    }
}

TEST_F(BrushSetTest, EveryCutCanBeSaved) {
    const SpelledFile file =
        Spell({{"MarginsAndStates", {1, 2, 3, 4, 5, 6, 7, 8}, {{}, {"u"}, {}, {}, {}}}, {"Simple", {}, {State()}}});
    for (const std::string& bytes : {file.GetText(), file.GetBinary()}) {
        for (std::size_t length = 0; length < bytes.size(); ++length) {
            const std::string once = Convert(bytes.substr(0, length), ArchiveFormat::Binary);
            m_Reports.Take();
            EXPECT_EQ(Convert(once, ArchiveFormat::Binary), once) << length;
            EXPECT_EQ(m_Reports.Take(), "") << length;
        }
    }
}

TEST(BrushContentTest, Words) {
    ExpectWords<BrushContent>(u"Simple MarginsAndStates Margins States");
}

} // namespace
} // namespace Corvid
