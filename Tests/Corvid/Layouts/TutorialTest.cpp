#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include "Tests/Support/WorkingFolder.h"

namespace Corvid {

namespace {

struct Command {
    std::string m_Line;
    std::string m_Output; // as the page shows it
};

// The commands of a page stand behind "    $ ", what they print in the lines behind, indented alike.
std::vector<Command> CommandsOf(const std::filesystem::path& page) {
    std::vector<Command> commands;
    std::ifstream stream(page);
    bool isInBlock = false;
    for (std::string line; std::getline(stream, line);) {
        if (line.starts_with("    $ ")) {
            commands.push_back({line.substr(6), {}});
            isInBlock = true;
        } else if (isInBlock && line.starts_with("    ")) {
            commands.back().m_Output += line.substr(4) + '\n';
        } else {
            isInBlock = false;
        }
    }
    return commands;
}

std::string FileText(const std::filesystem::path& path) {
    std::ifstream stream(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(stream), {});
}

TEST(Tutorial, ItsCommandsPrintWhatItShows) {
#ifdef _WIN32
    GTEST_SKIP() << "the page is for a shell";
#else
    const WorkingFolder folder;
    const std::filesystem::path source(CORVID_SOURCE_FOLDER);
    std::filesystem::create_directory_symlink(source / "Examples", "Examples");
    const std::vector<Command> commands = CommandsOf(source / "Docs/Layouts.md");
    EXPECT_GE(commands.size(), 8u);
    for (const Command& command : commands) {
        std::ofstream("step.sh") << "PATH=" << std::filesystem::path(CORVID_PROGRAM).parent_path().string()
                                 << ":$PATH\n"
                                 << command.m_Line << '\n';
        EXPECT_EQ(std::system("sh ./step.sh >printed 2>&1"), 0) << command.m_Line;
        EXPECT_EQ(FileText("printed"), command.m_Output) << command.m_Line;
    }
#endif
}

} // namespace

} // namespace Corvid
