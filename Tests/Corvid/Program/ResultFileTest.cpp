#include "Corvid/Files/ResultFile.h"

#include <filesystem>

#include "Tests/Corvid/Program/ProgramFixture.h"

namespace Corvid {

using ResultFileTest = ProgramFixture;

TEST_F(ResultFileTest, WritesOnlyWhatDiffers) {
    using Fate = ResultFile::Fate;
    const std::string result(100'000, 'r');
    const struct {
        const char* m_What;
        std::string m_Held;
        Fate m_Fate;
    } rows[] = {
        {"nothing", "", Fate::Changed},
        {"the same", result, Fate::Unchanged},
        {"another start", "x" + result.substr(1), Fate::Changed},
        {"another byte in a later block", result.substr(0, 70'000) + "x" + result.substr(70'001), Fate::Changed},
        {"less", result.substr(0, 70'000), Fate::Changed},
        {"more", result + "x", Fate::Changed},
    };
    for (const auto& row : rows) {
        for (const ResultFile::Use use : {ResultFile::Use::Compare, ResultFile::Use::Write}) {
            SCOPED_TRACE(row.m_What);
            Put("held", row.m_Held);
            ResultFile file("held", use, false);
            for (std::size_t at = 0; at < result.size(); at += 30'000)
                file.WriteBlock(result.data() + at, std::min<std::size_t>(30'000, result.size() - at));
            EXPECT_EQ(Get("held"), row.m_Held) << "before it is whole";
            EXPECT_EQ(file.Finish(), row.m_Fate);
            EXPECT_EQ(Get("held"), use == ResultFile::Use::Write ? result : row.m_Held);
        }
    }
}

TEST_F(ResultFileTest, NamesThatSeemFree) {
    // Below a new folder no look is taken; a file that came there meanwhile gives way.
    ResultFile file("late", ResultFile::Use::Write, false, true);
    Put("late", "somebody else's");
    file.WriteBlock("ours", 4);
    EXPECT_EQ(file.Finish(), ResultFile::Fate::Changed);
    EXPECT_EQ(Get("late"), "ours");
#ifndef _WIN32
    // A link that leads nowhere bears a name, and is written through.
    std::filesystem::create_symlink("target", "link");
    ResultFile linked("link", ResultFile::Use::Write, false);
    linked.WriteBlock("ours", 4);
    EXPECT_EQ(linked.Finish(), ResultFile::Fate::Changed);
    EXPECT_TRUE(std::filesystem::is_symlink("link"));
    EXPECT_EQ(Get("target"), "ours");
#endif
}

TEST_F(ResultFileTest, AnotherProgramsChangeIsNotMixedIn) {
    Put("held", std::string(50'000, 'a'));
    ResultFile file("held", ResultFile::Use::Write, false);
    file.WriteBlock(std::string(30'000, 'a').data(), 30'000);
    Put("held", std::string(40'000, 'b'));
    file.WriteBlock("c", 1);
    EXPECT_EQ(file.Finish(), ResultFile::Fate::Failed);
    EXPECT_EQ(Get("held"), std::string(40'000, 'b'));
}

} // namespace Corvid
