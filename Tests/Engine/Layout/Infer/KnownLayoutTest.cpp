#include "Engine/Layout/Infer/KnownLayout.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "Engine/Layout/Infer/LayoutInference.h"
#include "Engine/Layout/LayoutParser.h"
#include "Engine/Layout/LayoutText.h"

namespace Corvid {

namespace {

using namespace std::string_literals;

std::string Text(const std::string& lines) {
    return "TXT\nentityType \"Quest\"\n" + lines;
}

std::string Binary(const std::string& values) {
    return "BIN\n\5\0\0\0Q\0u\0e\0s\0t\0"s + values;
}

InferredType Continue(const Layout& layout, const std::vector<std::string>& files) {
    std::vector<Sample> samples;
    for (const std::string& file : files)
        samples.push_back({"sample" + std::to_string(samples.size()), file});
    const LayoutToContinue known{layout, "Quest.layout"};
    return InferLayouts(samples, {}, &known).m_Types.at(0);
}

TEST(KnownLayoutTest, WhatIsKnownStaysAndSamplesAddToIt) {
    struct Case {
        const char* name;
        const char* header;
        const char* known;
        std::vector<std::string> files;
        const char* continued;
    };
    const Case kCases[] = {
        {"KindsThatTextDoesNotTell",
         "layout 1\n",
         "\tc color\n\tn int64\n\td double\n\tf float\n",
         {Text("c 0\nn 5\nd 1.0\nf 5\n")},
         "\tc color\n\tn int64\n\td double\n\tf float\n"},
        {"AnAssumptionStaysOne", "layout 1 assumed\n", "\tf float\n", {Text("f 1.0\n")}, "\tf float\n"},
        {"ADoubtStays", "layout 1\n", "\tc int ?\n", {Text("c 5\n")}, "\tc int ?\n"},
        {"ALetterSettles", "layout 1\n", "\tc int ?\n", {Text("c ff\n")}, "\tc color\n"},
        {"ABoolGainsAValue", "layout 1\n", "\tb bool ? TRUE\n", {Text("b FALSE\n")}, "\tb bool\n"},
        {"AWordGainsWords", "layout 1\n", "\tw word \"A\"\n", {Text("w \"B\"\n")}, "\tw word \"A\" \"B\"\n"},
        {"BytesAloneSettleKinds",
         "layout 1 assumed\n",
         "\tc int ?\n\ts string\n\tf float\n",
         {Binary(std::string(16, '\0') + "\1\0\0\0x\0\0\0\x80\x3F"s),
          Binary(std::string(16, '\0') + "\1\0\0\0y\0\0\0\0\x40"s),
          Binary(std::string(16, '\0') + "\0\0\0\0\0\0\0\x40"s)},
         "\tc color\n\ts string\n\tf float\n"},
        {"NewFieldsStandWhereTheSamplesHaveThem",
         "layout 1\n",
         "\ta string\n\tn count\n\t\tb string\n\tz string\n",
         {Text("a \"\"\nx \"\"\nn 2\nb \"\"\ny TRUE\nb \"\"\ny FALSE\nz \"\"\n")},
         "\ta string\n\tx string\n\tn count\n\t\tb string\n\t\ty bool\n\tz string\n"},
        {"ACountThatWaitsForItsElements",
         "layout 1\n",
         "\tn count ? 0\n\tz string\n",
         {Text("n 2\na \"\"\na \"\"\nz \"\"\n")},
         "\tn count\n\t\ta string\n\tz string\n"},
        {"AnotherNumberCountsNothing",
         "layout 1\n",
         "\tn count ? 1\n\t\ta string\n\tz string\n",
         {Text("n 3\na \"\"\nz \"\"\n")},
         "\tn int\n\ta string\n\tz string\n"},
        {"AnIntegerThatCounts",
         "layout 1 assumed\n",
         "\tn int ?\n\ta string\n\tz string\n",
         {Text("n 2\na \"\"\na \"\"\nz \"\"\n"), Text("n 0\nz \"\"\n")},
         "\tn count\n\t\ta string\n\tz string\n"},
        {"AConditionThatNoSampleShows",
         "layout 1\n",
         "\tb bool\n\twhen b\n\t\tx float\n\ts string\n\twhen s = \"A\"\n\t\ty float\n",
         {Text("b FALSE\ns \"B\"\n")},
         "\tb bool\n\twhen b\n\t\tx float\n\ts string\n\twhen s = \"A\"\n\t\ty float\n"},
        {"OneLabelTwice",
         "layout 1\n",
         "\tw word \"A\" \"B\"\n\twhen w = \"A\"\n\t\tx float\n\twhen not w = \"A\"\n\t\tx string\n",
         {Text("w \"A\"\nx 1.0\n"), Text("w \"B\"\nx \"\"\n")},
         "\tw word \"A\" \"B\"\n\twhen w = \"A\"\n\t\tx float\n\twhen not w = \"A\"\n\t\tx string\n"},
        {"ARivalThatASampleRulesOut",
         "layout 1\n",
         "\ta bool\n\tb bool\n\twhen a ? b\n\t\tx string\n",
         {Text("a FALSE\nb TRUE\nx \"\"\n")},
         "\ta bool\n\tb bool\n\twhen b\n\t\tx string\n"},
        {"AConditionInDoubtThatHolds",
         "layout 1\n",
         "\ta bool\n\twhen a ?\n\t\tx string\n",
         {Text("a TRUE\nx \"\"\n")},
         "\ta bool\n\twhen a ?\n\t\tx string\n"},
        {"AConditionInDoubtThatSamplesProve",
         "layout 1\n",
         "\ta bool\n\twhen a ?\n\t\tx string\n",
         {Text("a TRUE\nx \"\"\nc TRUE\n"), Text("a TRUE\nx \"B\"\nc TRUE\n"), Text("a FALSE\nc TRUE\n"),
          Text("a FALSE\nc FALSE\n")},
         "\ta bool\n\twhen a\n\t\tx string\n\tc bool\n"},
        {"NobodyKnowsWhen",
         "layout 1\n",
         "\ta bool\n\twhen ?\n\t\tx string\n\tz string\n",
         {Text("a TRUE\nx \"\"\nz \"\"\n")},
         "\ta bool\n\twhen ?\n\t\tx string\n\tz string\n"},
        {"RecordsKeepTheirNames",
         "layout 1\nrecord Place\n\tp vector3\n",
         "\ta record Place\n\tb record Place\n",
         {Text("a\n\tp [ 1 2 3 ]\nb\n\tp [ 1 2 3 ]\n")},
         "\ta record Place\n\tb record Place\n"},
    };
    for (const Case& each : kCases) {
        SCOPED_TRACE(each.name);
        const ParsedLayout parsed = ParseLayout(std::string(each.header) + "entity Quest\n" + each.known, {});
        ASSERT_TRUE(parsed.m_Layout.has_value()) << parsed.m_Errors.at(0).m_Message;
        const InferredType type = Continue(*parsed.m_Layout, each.files);
        ASSERT_TRUE(type.m_Problems.empty()) << type.m_Problems[0].m_Message;
        const bool isAssumed = std::string(each.name) == "BytesAloneSettleKinds" ? false : parsed.m_Layout->IsAssumed();
        EXPECT_EQ(type.m_Layout.IsAssumed(), isAssumed);
        const std::string text = WriteLayoutText(type.m_Layout, {});
        EXPECT_EQ(text.substr(text.find("entity Quest\n") + 13), each.continued);
    }
}

TEST(KnownLayoutTest, WhatContradictsNamesBothLines) {
    struct Case {
        const char* known;
        const char* lines;
        int line;
        int layoutLine;
    };
    const Case kCases[] = {
        {"\ta color\n", "a -5\n", 3, 3},
        {"\ta float\n\tb float\n", "b 1.0\na 1.0\n", 3, 3},
        {"\ta float\n\tb float\n", "a 1.0\n", 3, 4},
        {"\ta bool\n\twhen a\n\t\tb float\n\tc float\n", "a FALSE\nb 1.0\nc 1.0\n", 4, 6},
        {"\ta bool\n\twhen a\n\t\tb float\n", "a FALSE\nb 1.0\n", 4, 5},
        {"\tn count\n\t\ta float\n", "n 2\na 1.0\n", 4, 4},
        {"\tn count\n", "n 2\nz 1.0\n", 3, 3},
        {"\tr\n\t\ta float\n", "r 5\n", 3, 3},
        {"\tn int\n\ta float\n", "n 2\na 1.0\na 1.0\n", 5, 4},
        {"\ta bool\n\tb bool\n\twhen a ? b\n\t\tx string\n\tz string\n", "a FALSE\nb FALSE\nx \"\"\nz \"\"\n", 0, 0},
    };
    for (const Case& each : kCases) {
        SCOPED_TRACE(each.known);
        const ParsedLayout parsed = ParseLayout("layout 1\nentity Quest\n" + std::string(each.known), {});
        ASSERT_TRUE(parsed.m_Layout.has_value());
        const InferredType type = Continue(*parsed.m_Layout, {Text(each.lines)});
        if (each.line == 0) { // a doubt without a reading that is left gives way to what the samples say
            EXPECT_TRUE(type.m_HasLayout);
            continue;
        }
        ASSERT_EQ(type.m_Problems.size(), 1u);
        EXPECT_FALSE(type.m_HasLayout);
        EXPECT_EQ(type.m_Problems[0].m_Place.m_Line, each.line) << type.m_Problems[0].m_Message;
        EXPECT_EQ(type.m_Problems[0].m_Other.m_Sample, "Quest.layout");
        EXPECT_EQ(type.m_Problems[0].m_Other.m_Line, each.layoutLine) << type.m_Problems[0].m_Message;
    }
}

} // namespace

} // namespace Corvid
