#include "Tests/Corvid/Program/ProgramFixture.h"

#include "Corvid/CommandLine/Completions.h"
#include "Corvid/CommandLine/Manual.h"
#include "Corvid/Commands/CommandTable.h"

namespace Corvid {

using ::testing::HasSubstr;
using CommandLineTest = ProgramFixture;

TEST_F(CommandLineTest, UsageErrorsNameTheirCauseAndPrintNoData) {
    Put("a.mesh", Example("Mesh/cube.mesh"));
    struct Case {
        std::vector<std::string> arguments;
        const char* cause;
    };
    const Case cases[] = {
        {{"chek"}, "'chek'"},
        {{"chek\x1b[31m\n"}, "'chek?[31m?'"},
        {{"--frob"}, "'--frob'"},
        {{"check", "--frob", "a.mesh"}, "'--frob'"},
        {{"check"}, "PATH"},
        {{"check", ""}, "empty"},
        {{"cat", "a.mesh", "b.mesh"}, "'b.mesh'"},
        {{"convert", "-i", "a.mesh"}, "--to"},
        {{"convert", "--to", "xml", "-i", "a.mesh"}, "'xml'"},
        {{"convert", "--to", "bin", "a.mesh"}, "-o"},
        {{"convert", "--to", "bin", "-i", "-o", "b.mesh", "a.mesh"}, "-i"},
        {{"convert", "--to", "bin", "-i", "-"}, "standard input"},
        {{"check", "-j", "0", "a.mesh"}, "'0'"},
        {{"check", "-j", "1x", "a.mesh"}, "'1x'"},
        {{"check", "--shard", "0/3", "a.mesh"}, "0/3"},
        {{"check", "--shard", "4/3", "a.mesh"}, "4/3"},
        {{"check", "--shard", "1/3/4", "a.mesh"}, "1/3/4"},
        {{"check", "-", "-"}, "once"},
        {{"check", "-", "--files-from", "-"}, "once"},
        {{"check", "--files-from=", "a.mesh"}, "is empty"},
        {{"check", "--type=", "a.mesh"}, "''"},
        {{"check", "a.mesh", "--shard"}, "--shard needs a value"},
        {{"check", "--list=yes", "a.mesh"}, "--list takes no value"},
        {{"check", "--type", "mesh", "--type", "mesh", "a.mesh"}, "--type is given more than once"},
        {{"convert", "--to", "bin", "--check", "-o", "-", "a.mesh"}, "standard output holds nothing"},
        {{"layout"}, "infer|check|show"},
        {{"layout", "frob"}, "'frob'"},
    };
    for (const Case& row : cases) {
        const Run run = Corvid(row.arguments);
        EXPECT_EQ(run.m_Status, kExitCouldNotRun) << row.cause;
        EXPECT_EQ(run.m_Out, "") << row.cause;
        EXPECT_THAT(run.m_Err, HasSubstr(row.cause));
    }
}

TEST_F(CommandLineTest, ArgumentsAreTakenAsTheyStand) {
    for (const char* name : {"[a, b]", "[]", "{}", "--to", "a b"})
        Put(name, Example("Mesh/cube.mesh"));
    const Run run = Corvid({"check", "--list", "--type=mesh", "--", "[a, b]", "[]", "{}", "--to", "a b"});
    EXPECT_EQ(run.m_Status, kExitDone) << run.m_Err;
    EXPECT_EQ(run.m_Out, "OK  --to\nOK  []\nOK  [a, b]\nOK  a b\nOK  {}\n");
}

TEST_F(CommandLineTest, EveryCommandTellsTheVersion) {
    for (const char* option : {"-V", "--version"}) {
        EXPECT_EQ(Corvid({"check", option}).m_Out, Corvid({option}).m_Out);
        EXPECT_EQ(Corvid({"layout", option}).m_Out, Corvid({option}).m_Out);
    }
}

TEST_F(CommandLineTest, EveryOptionIsInHelpManualAndCompletions) {
    const std::string documents[] = {ManualOf(GetCommands()), BashCompletionsOf(GetCommands()),
                                     ZshCompletionsOf(GetCommands()), FishCompletionsOf(GetCommands())};
    for (const CommandRow& row : GetCommands()) {
        CommandDeclaration declaration;
        const auto command = row.m_Make();
        command->Declare(declaration);
        EXPECT_FALSE(declaration.GetSummary().empty()) << row.m_Name;
        EXPECT_FALSE(declaration.GetExamples().empty()) << row.m_Name;
        std::vector<std::string> arguments;
        const std::string name(row.m_Name);
        arguments.push_back(name.substr(0, name.find(' ')));
        if (name.find(' ') != std::string::npos)
            arguments.push_back(name.substr(name.find(' ') + 1));
        arguments.push_back("--help");
        const Run help = Corvid(arguments);
        EXPECT_EQ(help.m_Status, kExitDone);
        for (const char* everywhere : {"--color", "--progress", "--quiet"})
            EXPECT_EQ(std::ranges::count(declaration.GetOptions(), everywhere, &OptionDeclaration::GetLong), 1)
                << row.m_Name << ' ' << everywhere;
        for (const OptionDeclaration& option : declaration.GetOptions()) {
            const std::string word = option.GetLong().empty() ? option.GetShort() : option.GetLong();
            EXPECT_THAT(help.m_Out, HasSubstr(word)) << row.m_Name;
            EXPECT_THAT(documents[1], HasSubstr(word)) << row.m_Name;
            EXPECT_THAT(documents[2], ::testing::AnyOf(HasSubstr(word + "["), HasSubstr(word + "=["))) << row.m_Name;
            EXPECT_THAT(documents[3], HasSubstr(word.substr(word.find_first_not_of('-')))) << row.m_Name;
        }
    }
}

} // namespace Corvid
