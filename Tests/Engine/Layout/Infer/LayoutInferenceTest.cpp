#include "Engine/Layout/Infer/LayoutInference.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>

#include "Engine/Layout/LayoutText.h"
#include "Tests/Engine/Layout/Infer/RandomLayout.h"

namespace Corvid {

namespace {

std::string Text(std::string_view lines) {
    return "TXT\nentityType \"Quest\"\n" + std::string(lines);
}

// The values behind the type word.
std::string Binary(std::string_view values) {
    return std::string("BIN\n\5\0\0\0Q\0u\0e\0s\0t\0", 18) + std::string(values);
}

std::string LayoutFrom(const std::vector<std::string>& files) {
    std::vector<Sample> samples;
    for (const std::string& file : files)
        samples.push_back({"sample" + std::to_string(samples.size()), file});
    const Inference inference = InferLayouts(samples, {});
    const InferredType& type = inference.m_Types.at(0);
    EXPECT_TRUE(type.m_Problems.empty()) << type.m_Problems[0].m_Message;
    const std::string text = WriteLayoutText(type.m_Layout, {});
    const std::size_t fields = text.find("entity Quest\n") + 13;
    return (type.m_Layout.IsAssumed() ? "assumed\n" : "") + text.substr(fields);
}

using namespace std::string_literals;

TEST(LayoutInferenceTest, TextsTellFieldsListsAndConditions) {
    struct Case {
        const char* name;
        std::vector<std::string> lines;
        const char* layout;
    };
    const Case kCases[] = {
        {"Kinds",
         {"b TRUE\ni -3\nn 5\nl 5000000000\nc ff0a\nf 1.5\ns \"x\"\nv [ 1 2 3 ]\nw [ 1 2 3 4 ]\np [ 1 , 2 ]\n"
          "r [ 1 , 2 , 3 , 4 ]\nm\n\t[ 1 0 0 ]\n\t[ 0 1 0 ]\n\t[ 0 0 1 ]\n",
          "b FALSE\ni 3\nn 7\nl 1\nc 80\nf 2\ns \"\"\nv [ 1 2 3 ]\nw [ 1 2 3 4 ]\np [ 1 , 2 ]\n"
          "r [ 1 , 2 , 3 , 4 ]\nm\n\t[ 1 0 0 ]\n\t[ 0 1 0 ]\n\t[ 0 0 1 ]\n"},
         "\tb bool\n\ti int\n\tn int ?\n\tl int64\n\tc color\n\tf float\n\ts string\n\tv vector3\n\tw vector4\n"
         "\tp pair\n\tr rect\n\tm matrix33\n"},
        {"ListInList",
         {"outer 2\na 1.0\ninner 2\nx 1.0\nx 2.0\na 2.0\ninner 0\nz TRUE\n", "outer 0\nz FALSE\n"},
         "\touter count\n\t\ta float\n\t\tinner count\n\t\t\tx float\n\tz bool\n"},
        {"GroupOfFour",
         {"n 2\na 1.0\nb 1.0\nc 1.0\nd 1.0\na 1.0\nb 1.0\nc 1.0\nd 1.0\n", "n 1\na 1.0\nb 1.0\nc 1.0\nd 1.0\n"},
         "\tn count\n\t\ta float\n\t\tb float\n\t\tc float\n\t\td float\n"},
        {"ElementsWithFieldsNowAndThen",
         {"n 2\na TRUE\nx 1.0\na FALSE\nz \"\"\n", "n 3\na FALSE\na TRUE\nx 2.0\na TRUE\nx 3.0\nz \"\"\n",
          "n 0\nz \"\"\n"},
         "\tn count\n\t\ta bool\n\t\twhen a\n\t\t\tx float\n\tz string\n"},
        {"ElementsThatBeginNowAndThen",
         {"b TRUE\nn 2\nx 1.0\na FALSE\nx 1.0\na TRUE\nz 1.0\ny \"\"\n",
          "b FALSE\nn 3\na FALSE\na TRUE\nz 2.0\na FALSE\ny \"\"\n", "b TRUE\nn 1\nx 1.0\na FALSE\ny \"\"\n",
          "b FALSE\nn 1\na TRUE\nz 1.0\ny \"\"\n"},
         "\tb bool\n\tn count\n\t\twhen b\n\t\t\tx float\n\t\ta bool\n\t\twhen a\n\t\t\tz float\n\ty string\n"},
        {"OneElementAtMostWithAnother",
         {"n 1\nm 1\nx 1.0\nk TRUE\ny \"\"\n", "n 1\nm 0\nk FALSE\ny \"\"\n", "n 0\ny \"\"\n",
          "n 1\nm 1\nx 2.0\nk TRUE\ny \"\"\n"},
         "\tn count ? 0 1\n\t\tm count ? 0 1\n\t\t\tx float\n\t\tk bool\n\ty string\n"},
        {"EndOfOneElementNowAndThen",
         {"b TRUE\nn 1\nx 1.0\nz 1.0\n", "b TRUE\nn 0\n", "b FALSE\nn 1\nx 1.0\n", "b FALSE\nn 0\n",
          "b TRUE\nn 1\nx 2.0\nz 1.0\n", "b FALSE\nn 1\nx 2.0\n"},
         "\tb bool\n\tn count ? 0 1\n\t\tx float\n\t\twhen b\n\t\t\tz float\n"},
        {"NumberThatCountsNothing",
         {"n 2\na 1.0\na 2.0\n", "n 3\na 1.0\na 2.0\n"},
         "\tn int ?\n\ta float\n\ta float\n"},
        {"OneElementAtMost", {"n 1\na 1.0\n", "n 0\n"}, "\tn count ? 0 1\n\t\ta float\n"},
        {"DecimalsOfAFloatAndOfADouble",
         {"f 123.456001\ng 123.456000\n", "f 87.654320\ng 1.0\n", "f 5432.100098\ng 1.0\n"},
         "\tf float\n\tg double ?\n"},
        {"DigitsOfColors", {"c 80808080\n", "c 10203040\n", "c 0\n"}, "\tc color ?\n"},
        {"ConditionOnBool",
         {"k TRUE\nx 1.0\n", "k FALSE\n", "k TRUE\nx 2.0\n", "k FALSE\ny 1.0\n", "k FALSE\ny 2.0\n"},
         "\tk bool\n\twhen k\n\t\tx float\n\twhen ?\n\t\ty float\n"},
        {"ConditionOnWord",
         {"k \"A\"\nx 1.0\n", "k \"B\"\n", "k \"C\"\nx 2.0\n", "k \"A\"\nx 1.5\n", "k \"B\"\nz 2.0\n",
          "k \"B\"\nz 1.0\n", "k \"C\"\nx 2.5\n", "k \"D\"\nz 2.0\n", "k \"D\"\nz 2.5\n", "k \"B\"\nz 1.0\n"},
         "\tk word \"A\" \"B\" \"C\" \"D\"\n\twhen k = \"A\" \"C\"\n\t\tx float\n\twhen ?\n\t\tz float\n"},
        {"RivalConditions",
         {"k TRUE\nl FALSE\nx 1.0\ny 1\n", "k FALSE\nl TRUE\ny 1\n", "k TRUE\nl FALSE\nx 2.0\ny 1\n",
          "k FALSE\nl TRUE\ny 2\n"},
         "\tk bool\n\tl bool\n\twhen not l ? k\n\t\tx float\n\ty int ?\n"},
        {"ConditionAroundIt",
         {"k TRUE\nr\n\tx 1.0\n", "k FALSE\nr\n", "k TRUE\nr\n\tx 1.0\n\ty \"\"\n", "k FALSE\nr\n\n",
          "k TRUE\nr\n\tx 4.0\n"},
         "\tk bool\n\tr\n\t\twhen k\n\t\t\tx float\n\t\twhen ?\n\t\t\ty string\n"},
        {"OneBoolValue", {"k TRUE\n", "k TRUE\nx 1.0\n"}, "\tk bool ? TRUE\n\twhen ?\n\t\tx float\n"},
    };
    for (const Case& each : kCases) {
        SCOPED_TRACE(each.name);
        std::vector<std::string> files;
        for (const std::string& lines : each.lines)
            files.push_back(Text(lines));
        EXPECT_EQ(LayoutFrom(files), std::string("assumed\n") + each.layout);
    }
}

TEST(LayoutInferenceTest, BytesSettleKinds) {
    const std::string one("\0\0\x80\x3F", 4);
    const auto wide = [](const char* end) { return Binary("\5\0\0\0\0\0\0\0\0\0"s + end); }; // 5 and a double
    struct Case {
        const char* name;
        std::vector<std::string> files;
        const char* layout;
    };
    const Case kCases[] = {
        {"TwinTellsAll",
         {Text("a 7\nb 1.0\nc 5\n"), Binary("\7\0\0\0\0\0\0\0"s + one + "\5\0\0\0"s)},
         "\ta int64\n\tb float\n\tc int\n"},
        {"NothingTellsWhichTakesEight",
         {Text("a 7\nr\n\tb 0\n"), Binary("\7\0\0\0\0\0\0\0\0\0\0\0"s)},
         "\ta int ? int64\n\tr\n\t\tb int64 ? int 0\n"},
        {"NothingTellsWhichTakesEightWithoutATwin",
         {Text("a 7\nb 0\nc TRUE\n"), Text("a 8\nb 0\nc FALSE\n"), Binary("\5\0\0\0\0\0\0\0\0\0\0\0\1"s),
          Binary("\4\0\0\0\0\0\0\0\0\0\0\0\1"s)},
         "\ta int ? int64\n\tb int64 ? int 0\n\tc bool\n"},
        {"RoundNumbersAreLikeTheOthers", // as an int64 and a float it would be 5 and 1.875, time and again
         {Text("a 5\nb 1.0\n"), Text("a 5\nb 2.0\n"), Text("a 5\nb 3.0\n"), Text("a 5\nb 4.0\n"), Text("a 5\nb 5.0\n"),
          Text("a 5\nb 6.0\n"), Text("a 5\nb 7.0\n"), Text("a 5\nb 8.0\n"), wide("\xF0\x3F"), wide("\x08\x40"),
          wide("\x14\x40"), wide("\x18\x40"), wide("\x1C\x40"), wide("\x22\x40")},
         "\ta int\n\tb double\n"},
        {"NegativeNumbersMakeADifference",
         {Text("a -7\nb 0\n"), Text("a 7\nb 0\n"), Binary("\7\0\0\0\0\0\0\0\0\0\0\0"s)},
         "\ta int ?\n\tb int ?\n"},
        {"TwinTellsDouble", {Text("b 1.0\n"), Binary("\0\0\0\0\0\0\xF0\x3F"s)}, "\tb double\n"},
        {"TwinTellsColor", {Text("c 0\n"), Binary(std::string(16, '\0'))}, "\tc color\n"},
        {"ZeroMayCount", {Text("c 0\ns \"x\"\n"), Binary("\0\0\0\0\1\0\0\0x\0"s)}, "\tc count ? 0\n\ts string\n"},
        {"OneMayCount", {Text("c 1\ns \"x\"\n"), Binary("\1\0\0\0\1\0\0\0x\0"s)}, "\tc count ? 1\n\t\ts string\n"},
        {"ZerosMakeNoTwin", // of the first text, read as an integer and a double
         {Text("a 0\nb FALSE\nc 0.0\nd 0.0\n"), Text("a 0\nb TRUE\nc 1.0\nd 1.0\n"),
          Binary(std::string(9, '\0') + one + std::string(4, '\0')), Binary(std::string(8, '\0') + '\1' + one + one)},
         "\ta int64\n\tb bool\n\tc float\n\td float\n"},
        {"AnotherContentTells",
         {Text("a 7\nb 1.0\n"), Text("a 3\nb 2.0\n"), Binary("\5\0\0\0"s + one)},
         "\ta int\n\tb float\n"},
        {"OtherNumberOfNoBytesTellsNothing",
         {Text("b TRUE\nc 1\nr\n\ts \"\"\nt \"\"\n"), Text("b TRUE\nc 1\nr\n\ts \"x\"\nt \"\"\n"),
          Text("b FALSE\nc 1\nr\nt \"\"\n"), Text("b FALSE\nc 1\nr\nt \"x\"\n"), Binary("\0\0\0\0\0\0\0\0\0"s)},
         "\tb bool\n\tc count ? 1\n\t\tr\n\t\t\twhen b\n\t\t\t\ts string\n\tt string\n"},
        {"OtherNumberCountsNothing", {Text("c 1\ns \"x\"\n"), Binary("\3\0\0\0\1\0\0\0x\0"s)}, "\tc int\n\ts string\n"},
    };
    for (const Case& each : kCases) {
        SCOPED_TRACE(each.name);
        EXPECT_EQ(LayoutFrom(each.files), each.layout);
    }
}

TEST(LayoutInferenceTest, WhatContradictsIsNamed) {
    struct Case {
        const char* name;
        std::string first;
        std::string second;
        int line; // in either
        int otherLine;
    };
    const Case kCases[] = {
        {"Order", Text("a 1.0\nb 1.0\n"), Text("b 2.0\na 1.0\n"), 4, 3},
        {"Kind", Text("a 1.0\n"), Text("a \"x\"\n"), 3, 3},
        {"RecordAndValue", Text("a 1.0\n"), Text("a\n\tb 1.0\n"), 3, 3},
        {"MatrixAndRecord", Text("a\n\t[ 1 0 0 ]\n\t[ 0 1 0 ]\n\t[ 0 0 1 ]\n"), Text("a\n\tb 1.0\n"), 3, 3},
    };
    for (const Case& each : kCases) {
        SCOPED_TRACE(each.name);
        const Inference inference = InferLayouts(std::vector<Sample>{{"x", each.first}, {"y", each.second}}, {});
        ASSERT_EQ(inference.m_Types.at(0).m_Problems.size(), 1u);
        EXPECT_FALSE(inference.m_Types[0].m_HasLayout);
        const InferenceProblem& problem = inference.m_Types[0].m_Problems[0];
        EXPECT_NE(problem.m_Place.m_Sample, problem.m_Other.m_Sample);
        EXPECT_EQ(problem.m_Place.m_Line, each.line) << problem.m_Message;
        EXPECT_EQ(problem.m_Other.m_Line, each.otherLine);
    }
    // A binary that nothing fits does not keep the others from making a layout.
    const Inference inference = InferLayouts(
        std::vector<Sample>{{"x", Text("a \"x\"\n")}, {"y", Binary("\1\0\0\0x"s)}, {"z", Binary("\1\0\0\0z\0"s)}}, {});
    EXPECT_TRUE(inference.m_Types.at(0).m_HasLayout);
    EXPECT_FALSE(inference.m_Types[0].m_Layout.IsAssumed());
    ASSERT_EQ(inference.m_Types[0].m_Problems.size(), 1u);
    EXPECT_EQ(inference.m_Types[0].m_Problems[0].m_Place.m_Sample, "y");
}

// By the path of labels: the kind, and "?" where it is in doubt.
std::map<std::string, std::string> KindsByPath(const Layout& layout) {
    std::map<std::string, std::string> kinds;
    for (LayoutIndex index = 0; index < layout.GetSize(); ++index) {
        std::string path;
        for (LayoutIndex node = index; node != kNoLayoutIndex; node = layout[node].m_Parent)
            path = layout[node].m_Label + (path.empty() || layout[node].m_Label.empty() ? "" : ".") + path;
        if (IsValueKind(layout[index].m_Kind))
            kinds[path] =
                std::to_string(static_cast<int>(layout[index].m_Kind)) + (layout[index].m_IsDoubtful ? "?" : "");
    }
    return kinds;
}

TEST(LayoutInferenceTest, MoreSamplesKeepWhatIsProvenAndOrderIsNothing) {
    const std::string string = std::to_string(static_cast<int>(LayoutKind::String));
    const std::string word = std::to_string(static_cast<int>(LayoutKind::Word));
    for (std::uint32_t seed = 1; seed <= 40; ++seed) {
        RandomLayout random(seed);
        std::vector<Sample> samples;
        for (int i = 0; i < 40; ++i) {
            const RandomLayout::File file = random.MakeFile();
            samples.push_back({std::to_string(i), i % 4 == 3 ? file.m_Binary : file.m_Text});
        }
        std::map<std::string, std::string> before;
        bool wasAssumed = true;
        for (const std::ptrdiff_t count : {6, 12, 20, 40}) {
            const std::vector<Sample> some(samples.begin(), samples.begin() + count);
            const InferredType type = InferLayouts(some, {}).m_Types.at(0);
            if (!type.m_Problems.empty()) // a binary file that the texts say too little about proves the others less
                continue;
            const Layout& layout = type.m_Layout;
            const auto kinds = KindsByPath(layout);
            for (const auto& [path, kind] : before) {
                const auto after = kinds.find(path);
                if (wasAssumed || kind.ends_with('?') || after == kinds.end())
                    continue;
                const bool isWord =
                    (kind == word || kind == string) && (after->second == word || after->second == string);
                EXPECT_TRUE(isWord || after->second == kind)
                    << "seed " << seed << ": " << path << " " << kind << " became " << after->second;
            }
            before = kinds;
            wasAssumed = layout.IsAssumed();
        }
        const std::string forward = WriteLayoutText(InferLayouts(samples, {}).m_Types.at(0).m_Layout, {});
        std::reverse(samples.begin(), samples.end());
        EXPECT_EQ(WriteLayoutText(InferLayouts(samples, {}).m_Types.at(0).m_Layout, {}), forward) << "seed " << seed;
    }
}

} // namespace

} // namespace Corvid
