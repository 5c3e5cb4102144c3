#include "Engine/Layout/LayoutParser.h"

#include <gtest/gtest.h>

#include "Engine/Layout/LayoutText.h"
#include "Kinds/BuiltInLayouts.h"

namespace Corvid {

namespace {

std::string ErrorsOf(std::string_view text) {
    std::string all;
    const ParsedLayout parsed = ParseLayout(text, BuiltInBlocks());
    for (const LayoutError& error : parsed.m_Errors)
        all += std::to_string(error.m_Line) + ':' + std::to_string(error.m_Column) + ": " + error.m_Message + '\n';
    EXPECT_EQ(parsed.m_Layout.has_value(), all.empty());
    return all;
}

TEST(LayoutParser, EverythingComesBackAsItWas) {
    constexpr std::string_view kText = "layout 1 assumed\n"
                                       "record StageCost\n"
                                       "\tcredits float\n"
                                       "\tisFree bool ? FALSE\n"
                                       "record Stage\n"
                                       "\tcost record StageCost\n"
                                       "\tduration double ?\n"
                                       "entity ResearchSubject\n"
                                       "\tuse IHUDDefinition\n"
                                       "\t\"use\" string\n"
                                       "\t\"a # \\\"b\\\\\" int64\n"
                                       "\t\"?\" int ?\n"
                                       "\tstageCount count\n"
                                       "\t\tstage record Stage\n"
                                       "\t\tother\n"
                                       "\t\t\tcost record StageCost\n"
                                       "\tfew int ? int64\n"
                                       "\tmany int64 ? int 0\n"
                                       "\tnothing count ? 0 1\n"
                                       "\thasPrerequisite bool\n"
                                       "\t\"not\" bool\n"
                                       "\twhen not hasPrerequisite\n"
                                       "\t\tkind word \"Flat\" \"Scaled up\" \"\"\n"
                                       "\t\twhen kind = \"Flat\" ? \"not\" not hasPrerequisite kind = \"\"\n"
                                       "\t\t\tat vector3\n"
                                       "\t\twhen not kind = \"Flat\" \"Scaled up\"\n"
                                       "\t\t\tto vector4\n"
                                       "\twhen ?\n"
                                       "\t\tsize pair\n"
                                       "\t\tbox rect\n"
                                       "\tturn matrix33\n"
                                       "\tplace matrix44\n"
                                       "\ttint color\n";
    ASSERT_EQ(ErrorsOf(kText), "");
    const ParsedLayout parsed = ParseLayout(kText, BuiltInBlocks());
    EXPECT_EQ(WriteLayoutText(*parsed.m_Layout, BuiltInBlocks()), kText);

    // With a mark, CR LF, blank lines and comments it is the same.
    std::string dressed = "\xEF\xBB\xBF# \xC3\xA9t\xC3\xA9\r\n\r\n";
    for (const char c : kText)
        dressed += c == '\n' ? "  # why\r\n" : std::string(1, c);
    const ParsedLayout again = ParseLayout(dressed, BuiltInBlocks());
    ASSERT_TRUE(again.m_Layout);
    EXPECT_EQ(WriteLayoutText(*again.m_Layout, BuiltInBlocks()), kText);
    EXPECT_TRUE(again.m_Layout->IsAssumed());

    // A field of a record that is used stands where the record has it; one of a block nowhere.
    const auto nodes = parsed.m_Layout->GetNodes();
    EXPECT_EQ(nodes[1].m_Line, 0);
    const auto isFree = std::find_if(nodes.begin(), nodes.end(), [](auto& node) { return node.m_Label == "isFree"; });
    EXPECT_EQ(isFree->m_Line, 4);
    EXPECT_EQ(isFree->m_Column, 2);
}

TEST(LayoutParser, ErrorsSayWhereAndWhat) {
    struct Case {
        const char* m_Text; // behind "layout 1\nentity Quest\n", unless it begins otherwise
        const char* m_Errors;
    };
    constexpr Case kCases[] = {
        {"layout 2\nentity Quest\n", "1:8: unknown version '2'; known is 1\n"},
        {"TXT\n", "1:1: the first line is 'layout 1'\n"},
        {"layout 1\n", "2:1: the layout has no 'entity', with the type word that it is for\n"},
        {"layout 1\n\tx int\nentity Quest\n", "2:2: fields stand below a 'record' or 'entity'\n"},
        {"layout 1\nentity A\nentity B\n", "3:1: a second entity; a layout is for one type\n"},
        {"layout 1\nrecord IHUDDefinition\n\tx int\nentity A\n",
         "2:8: 'IHUDDefinition' is a block that is built in; give the record another name\n"},
        {"layout 1\nentity A\n\tx record B\n", "3:11: no record 'B' above this line\n"},
        {"layout 1\nrecord Best\nentity A\n\tx record bst\n",
         "4:11: no record 'bst' above this line (did you mean 'Best'?)\n"},
        {"layout 1\nrecord A\n\tx record A\nentity B\n", "3:11: no record 'A' above this line\n"},
        {"\tspeed flot\n", "3:8: unknown kind 'flot' (did you mean 'float'?)\n"},
        {"\ta flaot # x\n\t\tb nonsense\n\tc intt\n",
         "3:4: unknown kind 'flaot' (did you mean 'float'?)\n5:4: unknown kind 'intt' (did you mean 'int'?)\n"},
        {"\ta int\n\t\tb int\n", "4:3: nothing can be nested in the line above\n"},
        {"\t\tb int\n", "3:3: more tabs than one below the line above\n"},
        {"    b int\n", "3:1: blanks in front of the line; indent it with tabs, one a level\n"},
        {"\tuse IHudDefinition\n", "3:6: unknown block 'IHudDefinition' (did you mean 'IHUDDefinition'?)\n"},
        {"\ta int 7\n", "3:8: nothing is expected here, and there is '7'\n"},
        {"\ta string ?\n", "3:11: only numbers, colors, counts, bools and conditions can be in doubt\n"},
        {"\ta count ? 1 x\n", "3:14: 'x' is not a number that a count can have\n"},
        {"\ta int ? int64 x\n", "3:16: 'x' is not a number\n"},
        {"\ta bool ? 1\n", "3:11: here stands TRUE or FALSE, the value that was seen\n"},
        {"\ta word\n", "3:8: the words are missing: in quotes, one after the other\n"},
        {"\ta word Flat\n", "3:9: the words are missing: in quotes, one after the other\n"},
        {"\twhen a\n\t\tb int\n", "3:7: no field 'a' above, in this record or one around it\n"},
        {"\tin\n\t\ta bool\n\twhen a\n", "5:7: no field 'a' above, in this record or one around it\n"},
        {"\ta word \"Flat\"\n\twhen a = \"Flt\"\n", "4:11: 'a' has no word 'Flt' (did you mean 'Flat'?)\n"},
        {"\ta word \"Flat\"\n\twhen a\n", "4:7: of 'a' the words are missing: when a = \"...\"\n"},
        {"\ta bool\n\twhen a = \"x\"\n", "4:7: 'a' is no word; a bool stands alone\n"},
        {"\ta int\n\twhen a\n", "4:7: 'a' is neither a bool nor a word\n"},
        {"\twhen\n", "3:6: the label of an earlier field is missing\n"},
        {"\t\"a\nb\n", "3:2: a quote that is not closed on its line\n"
                       "4:1: here stands 'record' or 'entity'; fields are indented by a tab\n"},
        {"\t\"\xC3\xA9\" int\n",
         "3:2: a label has 1 to 127 characters of printable ASCII, the first of them neither a blank nor '['\n"},
        {"\t[a int\n",
         "3:2: a label has 1 to 127 characters of printable ASCII, the first of them neither a blank nor '['\n"},
        {"\trecord int\n", "3:2: a label that is a directive is written in quotes: \"record\"\n"},
        {"\ta int # \xC3\xA9 \xC3\n", "3:12: a control character, or bytes that are not UTF-8\n"},
        {"\ta\"b int\n", "3:3: a quote within a word; write the word in quotes, and this one as \\\"\n"},
    };
    for (const Case& row : kCases) {
        const std::string text(row.m_Text);
        const bool isWhole = text.starts_with("layout") || text.starts_with("TXT");
        EXPECT_EQ(ErrorsOf(isWhole ? text : "layout 1\nentity Quest\n" + text), row.m_Errors) << text;
    }
}

// Each of these would take more memory or time than its size warrants, if nothing stopped it.
TEST(LayoutParser, HostileLayoutsAreBounded) {
    const std::string start = "layout 1\n";
    std::string doubling = start + "record R0\n\tx int\n\ty int\n";
    for (int i = 1; i < 40; ++i) {
        const std::string inner = " record R" + std::to_string(i - 1) + '\n';
        doubling += "record R" + std::to_string(i) + "\n\ta" + inner + "\tb" + inner;
    }
    EXPECT_NE(ErrorsOf(doubling + "entity A\n").find("more than 100,000 fields and words"), std::string::npos);

    std::string deep = start + "entity A\n";
    for (std::size_t depth = 1; depth <= 40; ++depth)
        deep += std::string(depth, '\t') + "x\n";
    EXPECT_EQ(ErrorsOf(deep), "35:34: more than 32 levels within each other\n");

    std::string chained = start + "record R0\n\tx int\n";
    for (int i = 1; i < 40; ++i)
        chained += "record R" + std::to_string(i) + "\n\ta record R" + std::to_string(i - 1) + '\n';
    EXPECT_NE(ErrorsOf(chained + "entity A\n").find("more than 32 levels"), std::string::npos);

    std::string many = start + "entity A\n";
    for (int i = 0; i < 10'001; ++i)
        many += "\tx int\n";
    EXPECT_EQ(ErrorsOf(many), "10003:2: more than 10,000 fields\n");

    std::string wrong = start + "entity A\n";
    for (int i = 0; i < 5'000; ++i)
        wrong += "\tx nt\n";
    EXPECT_EQ(ParseLayout(wrong, BuiltInBlocks()).m_Errors.size(), LayoutBounds::kMostErrors);

    EXPECT_EQ(ErrorsOf(std::string(LayoutBounds::kMostBytes + 1, '#')), "1:1: the layout is larger than 1 MiB\n");
}

} // namespace

} // namespace Corvid
