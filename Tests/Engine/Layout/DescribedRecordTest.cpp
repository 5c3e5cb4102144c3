#include "Engine/Layout/DescribedRecord.h"

#include "Engine/Layout/LayoutParser.h"
#include "Tests/Support/ArchiveFixture.h"

namespace Corvid {

namespace {

class DescribedRecordTest : public ArchiveFixture {
protected:
    // Lines of an entity, each ended by "\n" and indented by one tab at least.
    static std::shared_ptr<const RecordPlan> Plan(std::string_view fields) {
        ParsedLayout parsed = ParseLayout("layout 1\nentity Quest\n" + std::string(fields), LayoutBlocks());
        EXPECT_TRUE(parsed.m_Layout) << (parsed.m_Errors.empty() ? "" : parsed.m_Errors[0].m_Message);
        return std::make_shared<RecordPlan>(std::move(*parsed.m_Layout));
    }

    // Loads lines and gives those that are saved, with LF.
    std::string Convert(std::string_view fields, std::string_view lines) {
        DescribedRecord record(Plan(fields));
        LoadText(lines, record);
        const std::string binary = Save(ArchiveFormat::Binary, record);
        std::string text = SaveText(record);
        std::erase(text, '\r');
        // Through the other encoding, which has no labels, nothing changes.
        if (m_Reports.GetTexts().empty() && fields.find("when ?") == fields.npos) {
            Load(binary, record);
            EXPECT_EQ(Save(ArchiveFormat::Binary, record), binary);
        }
        return text;
    }
};

TEST_F(DescribedRecordTest, ConditionsAskTheNearestEarlierValue) {
    struct Case {
        const char* m_Name;
        const char* m_Fields;
        const char* m_Lines; // the same when saved
    };
    constexpr Case kCases[] = {
        {"BoolHolds", "\ta bool\n\twhen a\n\t\tx int\n\ty int\n", "a TRUE\nx 1\ny 2\n"},
        {"BoolFails", "\ta bool\n\twhen a\n\t\tx int\n\ty int\n", "a FALSE\ny 2\n"},
        {"Negated", "\ta bool\n\twhen not a\n\t\tx int\n", "a FALSE\nx 1\n"},
        {"OneOfTheWords", "\tw word \"A\" \"B\" \"C\"\n\twhen w = \"A\" \"C\"\n\t\tx int\n", "w \"C\"\nx 1\n"},
        {"NoneOfTheWords", "\tw word \"A\" \"B\"\n\twhen not w = \"A\"\n\t\tx int\n", "w \"B\"\nx 1\n"},
        {"OfARecordAround", "\ta bool\n\tr\n\t\twhen a\n\t\t\tx int\n", "a TRUE\nr\n\tx 1\n"},
        {"OfEachElement", "\tn count\n\t\ta bool\n\t\twhen a\n\t\t\tx int\n",
         "n 3\na TRUE\nx 1\na FALSE\na TRUE\nx 2\n"},
        {"OfTheElementNotTheOneBefore", "\tn count\n\t\ta bool\n\t\twhen a\n\t\t\tb bool\n\t\twhen b\n\t\t\tx int\n",
         "n 2\na TRUE\nb TRUE\nx 1\na FALSE\n"},
        {"WhicheverBranchHasIt", "\ta bool\n\twhen a\n\t\tb bool\n\twhen not a\n\t\tb bool\n\twhen b\n\t\tx int\n",
         "a TRUE\nb TRUE\nx 1\n"},
        {"TheOuterOneWhereTheInnerIsNotThere", "\tb bool\n\ta bool\n\twhen a\n\t\tb bool\n\twhen b\n\t\tx int\n",
         "b TRUE\na FALSE\nx 1\n"},
        {"CountsInCounts", "\tn count\n\t\tm count\n\t\t\tx int\n", "n 2\nm 1\nx 5\nm 0\n"},
        {"NobodyKnowsWhen", "\twhen ?\n\t\tx int\n\ty int\n\twhen ?\n\t\tr\n\t\t\tz int\n", "y 2\nr\n\tz 3\n"},
    };
    for (const Case& row : kCases) {
        EXPECT_EQ(Convert(row.m_Fields, row.m_Lines), row.m_Lines) << row.m_Name;
        EXPECT_EQ(m_Reports.Take(), "") << row.m_Name;
    }
}

// What recast would take in silence from a compiled record is reported of a described one.
TEST_F(DescribedRecordTest, ImpossibleValuesAreReported) {
    struct Case {
        const char* m_Fields;
        const char* m_Lines;
        const char* m_Saved;
        const char* m_Report; // a part
    };
    constexpr Case kCases[] = {
        {"\tw word \"A\"\n", "w \"B\"\n", "w \"B\"\n", "'B'"},
        {"\tn count\n\t\tx int\n", "n -1\n", "n 0\n", "count == 0"},
        {"\tn count\n", "n 1\n", "n 0\n", "count == 0"},
        {"\tr\n\t\tx int\n\t\tn count\n\t\t\ty int\n", "s\n", "r\n\tx 0\n\tn 0\n", "missing Label"},
    };
    for (const Case& row : kCases) {
        EXPECT_EQ(Convert(row.m_Fields, row.m_Lines), row.m_Saved);
        EXPECT_EQ(m_Reports.Count(row.m_Report), 1) << m_Reports.Take();
        m_Reports.Take();
    }
}

// A count is a claim: elements without fields in them, too, are bounded by the size of the file.
TEST_F(DescribedRecordTest, CountsAreBoundedByTheInput) {
    for (const char* const fields :
         {"\tn count\n\t\tx int\n", "\tn count\n\t\tr\n", "\ta bool\n\tn count\n\t\twhen a\n\t\t\tx int\n",
          "\tn count\n\t\tm count\n\t\t\tr\n\t\t\t\tx string\n"}) {
        DescribedRecord record(Plan(fields));
        Load(std::string(kBinaryHeader) + std::string(fields[1] == 'a' ? 1 : 0, '\0') + "\xFF\xFF\xFF\x7F", record);
        EXPECT_GE(m_Reports.Count("2147483647"), 1) << fields;
        m_Reports.Take();
        EXPECT_LT(Save(ArchiveFormat::Binary, record).size(), 1'000'000u) << fields;
        m_Reports.Take();
    }
}

} // namespace

} // namespace Corvid
