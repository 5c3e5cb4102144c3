#include <gtest/gtest.h>

#include "Corvid/Load/LoadedFile.h"
#include "Tests/Corvid/Explain/ExplainFixture.h"
#include "Tests/Corvid/Layouts/OneLayout.h"
#include "Tests/Support/SpelledFile.h"

namespace Corvid {

namespace {

OneLayout Quest(const std::string& fields) {
    return OneLayout("layout 1\nentity Quest\n" + fields);
}

struct Outcome {
    std::string m_Findings;
    bool m_IsUsable = false; // something may be made of the file
};

Outcome Judge(const LayoutSource& layouts, std::string bytes, bool isUnprovenAllowed = false) {
    LoadOptions options;
    options.m_Layouts = &layouts;
    options.m_IsUnprovenAllowed = isUnprovenAllowed;
    const LoadedFile file = LoadNamed(std::move(bytes), "a.entity", options);
    EXPECT_NE(file.GetBest(), nullptr);
    Outcome outcome{FindingsOf(file), file.m_Object != nullptr && !file.m_Log.HasErrors()};
    return outcome;
}

std::string Text(const std::string& lines) {
    return "TXT\nentityType \"Quest\"\n" + lines;
}

// The rule of touching, from text. What is refused is let through where that is allowed.
TEST(DescribedFile, FilesThatTouchADoubtAreRefused) {
    struct Case {
        const char* m_Fields;
        const char* m_Lines;
        const char* m_Touched; // paths; null: nothing
    };
    constexpr const char* kRivals = "\ta bool\n\tb bool\n\twhen a ? b\n\t\tx int\n";
    constexpr const char* kAbsentRival = "\tc bool\n\twhen c\n\t\tb bool\n\ta bool\n\twhen a ? b\n\t\tx int\n";
    const Case cases[] = {
        {"\tn int ?\n", "n 0\n", "n"},
        {"\tn count ? 0 2\n", "n 0\n", nullptr},
        {"\tn count ? 0 2\n\t\tx int\n", "n 1\nx 1\n", "n"},
        {"\tn count ?\n", "n 0\n", "n"},
        {"\tn bool ? FALSE\n", "n FALSE\n", nullptr},
        {"\tn bool ? FALSE\n", "n TRUE\n", "n"},
        {"\tn bool ?\n", "n TRUE\n", "n"},
        {kRivals, "a TRUE\nb TRUE\nx 1\n", nullptr},
        {kRivals, "a FALSE\nb FALSE\n", nullptr},
        {kRivals, "a TRUE\nb FALSE\nx 1\n", ""},
        {kRivals, "a FALSE\nb TRUE\n", ""},
        {kAbsentRival, "c FALSE\na FALSE\n", ""},
        {kAbsentRival, "c TRUE\nb TRUE\na TRUE\nx 1\n", nullptr},
        {"\ta bool\n\twhen a ?\n\t\tx int\n", "a TRUE\nx 1\n", ""},
        {"\tw word \"A\" \"B\"\n\tb bool\n\twhen b ? w = \"A\"\n\t\tx int\n", "w \"A\"\nb TRUE\nx 1\n", nullptr},
        {"\tw word \"A\" \"B\"\n\tb bool\n\twhen b ? w = \"A\"\n\t\tx int\n", "w \"A\"\nb FALSE\n", ""},
        {"\twhen ?\n\t\tx int\n\ty int\n", "x 1\ny 2\n", nullptr}, // labels tell
        {"\twhen ?\n\t\tx int\n\ty int\n", "y 2\n", nullptr},
        {"\tn count\n\t\tr\n\t\t\tm int ?\n", "n 2\nr\n\tm 1\nr\n\tm 2\n", "r[0].m"}, // once
        {"\tn count\n\t\tlong count\n\t\t\tx int ?\n\tm count\n\t\tlong count\n\t\t\tx int\n",
         "n 1\nlong 1\nx 1\nm 1\nlong 1\nx 2\n", "x[0][0]"},
        {"\ta int ? int64\n\tb int64 ? int 0\n", "a 7\nb 0\n", nullptr}, // alike, whichever takes 8 bytes
        {"\ta int ? int64\n\tb int64 ? int 0\n", "a -7\nb 0\n", "a"},
        {"\ta int ? int64\n\tb int64 ? int 0\n", "a 7\nb 1\n", "b"},
    };
    for (const Case& row : cases) {
        const OneLayout layout = Quest(row.m_Fields);
        std::string expected;
        if (row.m_Touched != nullptr)
            expected = row.m_Touched + std::string(*row.m_Touched != '\0' ? " " : "") + "[unproven]\n";
        const Outcome refused = Judge(layout, Text(row.m_Lines));
        EXPECT_EQ(refused.m_Findings, expected) << row.m_Fields << row.m_Lines;
        EXPECT_EQ(refused.m_IsUsable, expected.empty());
        const Outcome allowed = Judge(layout, Text(row.m_Lines), true);
        EXPECT_EQ(allowed.m_Findings, expected);
        EXPECT_TRUE(allowed.m_IsUsable) << row.m_Fields << row.m_Lines;
    }
}

TEST(DescribedFile, NothingTellsABinaryFileWhatNobodyKnows) {
    const OneLayout layout = Quest("\twhen ?\n\t\tx int\n\ty int\n");
    const std::string bytes = SpelledFile().String("entityType", "Quest").Int("y", 2).GetBinary();
    EXPECT_EQ(Judge(layout, bytes).m_Findings, "[unproven]\n");
    EXPECT_FALSE(Judge(layout, bytes, true).m_IsUsable);

    // Behind the record stands what has the label of the field that is not there.
    const OneLayout alike = Quest("\tr\n\t\tn int\n\t\twhen ?\n\t\t\ts string\n\ts\n\t\tm int\n");
    const std::string nested = SpelledFile()
                                   .String("entityType", "Quest")
                                   .Begin("r")
                                   .Int("n", 2)
                                   .End()
                                   .Begin("s")
                                   .Int("m", 3)
                                   .End()
                                   .GetBinary();
    EXPECT_EQ(Judge(alike, nested).m_Findings, "[refused]\n[unproven]\n");
}

TEST(DescribedFile, AnAssumedLayoutIsAWarningThatStaysOne) {
    const OneLayout layout("layout 1 assumed\nentity Quest\n\tx float\n");
    LoadOptions options;
    options.m_Layouts = &layout;
    LoadedFile file = LoadNamed(Text("x 1.5\n"), "a.entity", options);
    file.m_Log.PromoteWarnings();
    ASSERT_EQ(file.m_Log.GetAll().size(), 1u);
    EXPECT_EQ(file.m_Log.GetAll()[0].m_Severity, Severity::Warning);
    EXPECT_NE(file.m_Object, nullptr);
}

TEST(DescribedFile, WhatIsImpossibleIsAnError) {
    const OneLayout layout = Quest("\tb bool\n\tf float\n\tw word \"A\" \"B\"\n\tn count\n\tc color\n");
    const auto spell = [](float number, const char* word, int count) {
        return SpelledFile()
            .String("entityType", "Quest")
            .Bool("b", true)
            .Float("f", number)
            .String("w", word)
            .Int("n", count)
            .Color("c", "ff000000", {0, 0, 0, 255});
    };
    const std::string sound = spell(1.5f, "B", 0).GetBinary();
    EXPECT_EQ(Judge(layout, sound).m_Findings, "");
    EXPECT_EQ(Judge(layout, spell(1.5f, "B", 0).GetText()).m_Findings, "");
    const auto with = [&](std::size_t fromEnd, std::string_view bytes) {
        std::string changed = sound;
        return changed.replace(changed.size() - fromEnd, bytes.size(), bytes);
    };
    const struct {
        std::string m_Bytes;
        const char* m_Findings;
    } cases[] = {
        {with(31, "\x02"), "@18 b [bad-value]\n"},
        {with(16, std::string_view("\x00\x00\x00\x40", 4)), "@33 c [bad-value]\n"}, // 2.0
        {spell(1e-40f, "B", 0).GetBinary(), "@19 f [bad-value]\n"},
        {spell(1.5f, "C", 0).GetBinary(), "@23 w [unknown-word]\n"},
        {spell(1.5f, "B", 1).GetBinary(), "@29 n [bad-count]\n"},
        {sound + '\0', "@49 [unread-input]\n"},
        {sound.substr(0, sound.size() - 1), "@33 c [input-ends]\n"},
        {spell(1.5f, "C", 0).GetText(), "5:3 w [unknown-word]\n"},
        {spell(1.5f, "B", 1).GetText(), "6:1 n [bad-count]\n"},
    };
    for (const auto& row : cases) {
        const Outcome outcome = Judge(layout, row.m_Bytes);
        EXPECT_EQ(outcome.m_Findings, row.m_Findings);
        EXPECT_FALSE(outcome.m_IsUsable);
    }
}

// What an element begins with: a list, or a condition.
TEST(DescribedFile, ElementsThatBeginWithNoPlainField) {
    constexpr const char* kLists = "\tn count\n\t\ta count\n\t\t\tb int\n\t\tc int\n\td bool\n";
    constexpr const char* kConditions =
        "\tk bool\n\tn count\n\t\twhen k\n\t\t\ta int\n\t\tc bool\n\t\twhen c\n\t\t\tb int\n\td bool\n";
    const struct {
        const char* m_Fields;
        const char* m_Lines;
        const char* m_Findings;
    } cases[] = {
        {kLists, "n 0\nd TRUE\n", ""},
        {kLists, "n 2\na 0\nc 1\na 2\nb 1\nb 2\nc 1\nd TRUE\n", ""},
        {kLists, "n 1\na 1\nb 1\nc 1\nd TRUE\n", ""},
        {kLists, "n 2\na 1\nb 1\nc 1\nd TRUE\n", "7:1 a[1] [missing-field]\n"},
        {kConditions, "k TRUE\nn 2\na 1\nc FALSE\na 1\nc TRUE\nb 1\nd TRUE\n", ""},
        {kConditions, "k FALSE\nn 2\nc FALSE\nc TRUE\nb 1\nd TRUE\n", ""},
        {kConditions, "k FALSE\nn 2\nc FALSE\nd TRUE\n", "6:1 a[1] [missing-field]\n"},
        {kConditions, "k FALSE\nn 1\nc FALSE\nc FALSE\nd TRUE\n", "6:1 c [unknown-label]\n"},
    };
    for (const auto& row : cases)
        EXPECT_EQ(Judge(Quest(row.m_Fields), Text(row.m_Lines)).m_Findings, row.m_Findings)
            << row.m_Fields << row.m_Lines;
}

// Cut at any length, a described file is refused with a reason, in either encoding.
TEST(DescribedFile, CutAnywhereItIsRefused) {
    const OneLayout layout = Quest("\ts string\n\tn count\n\t\tr\n\t\t\tk bool\n\t\t\twhen k\n\t\t\t\tf float\n"
                                   "\t\tw word \"A\" \"B\"\n\tm count\n\tc color\n\tlast bool\n");
    const std::string text =
        Text("s \"abc\"\nn 2\nr\n\tk TRUE\n\tf 1.5\nw \"A\"\nr\n\tk FALSE\nw \"B\"\nm 0\nc ff00ff00\n"
             "last TRUE");
    LoadOptions options;
    options.m_Layouts = &layout;
    const LoadedFile sound = LoadNamed(text, "a.entity", options);
    ASSERT_EQ(FindingsOf(sound), "");
    const std::string binary = SaveToBytes(*sound.m_Object, ArchiveFormat::Binary, FloatPrecision::Exact).value();
    for (const std::string& whole : {text, binary}) {
        ASSERT_FALSE(LoadNamed(whole, "a.entity", options).m_Log.HasErrors());
        for (std::size_t length = 0; length < whole.size(); ++length)
            EXPECT_TRUE(LoadNamed(whole.substr(0, length), "a.entity", options).m_Log.HasErrors())
                << whole.substr(0, 3) << " of " << length;
    }
}

TEST(DescribedFile, AFieldThatIsDueAndAbsentIsAnError) {
    const OneLayout layout = Quest("\ta bool\n\twhen a\n\t\tx int\n\ty int\n");
    EXPECT_EQ(Judge(layout, Text("a TRUE\ny 1\n")).m_Findings, "4:1 x [missing-field]\n");
    EXPECT_EQ(Judge(layout, Text("a FALSE\nx 1\ny 1\n")).m_Findings, "4:1 x [unknown-label]\n");
    const OneLayout empty = Quest("\ta int\n\tempty\n\tb int\n"); // nothing could be nested in what is missing
    EXPECT_EQ(Judge(empty, Text("a 1\nb 1\n")).m_Findings, "4:1 empty [missing-field]\n");
}

TEST(DescribedFile, ABadLayoutIsToldWithItsPlace) {
    const OneLayout layout = Quest("\ta flot\n");
    LoadOptions options;
    options.m_Layouts = &layout;
    const LoadedFile file = LoadNamed(Text("a 1\n"), "a.entity", options);
    EXPECT_EQ(file.GetBest(), nullptr);
    ASSERT_EQ(file.m_Log.GetAll().size(), 1u);
    EXPECT_EQ(file.m_Log.GetAll()[0].m_Message, "Quest.layout:3:4: unknown kind 'flot' (did you mean 'float'?)");
}

// Types that are built in never ask.
TEST(DescribedFile, SettledTypesAreAlwaysBuiltIn) {
    const OneLayout layout = Quest("\tx int\n");
    LoadOptions options;
    options.m_Layouts = &layout;
    const LoadedFile file = LoadNamed("TXT\nentityType \"Fleet\"\ndefaultCohesionRange \"Far\"\n", "a.entity", options);
    EXPECT_EQ(FindingsOf(file), "");
    EXPECT_EQ(file.m_LayoutOrigin, "built-in");
}

} // namespace

} // namespace Corvid
