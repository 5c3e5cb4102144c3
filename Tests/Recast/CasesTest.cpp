#include <gtest/gtest.h>

#include <cstdlib>
#include <map>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include "Tests/Support/WorkingFolder.h"

#ifndef _WIN32
#include <sys/wait.h>
#endif

namespace Corvid {
namespace {

namespace fs = std::filesystem;

const fs::path kCases = CORVID_SOURCE_FOLDER "/Tests/Recast/Cases";
const std::set<std::string> kDescription = {"arguments", "status", "stdout", "expected"};

std::string ReadFile(const fs::path& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

// The files of a folder by their names in it, without those that describe a case.
std::map<std::string, std::string> ReadFiles(const fs::path& folder) {
    std::map<std::string, std::string> files;
    if (!fs::exists(folder))
        return files;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        const fs::path name = entry.path().lexically_relative(folder);
        if (entry.is_regular_file() && kDescription.count(name.begin()->string()) == 0)
            files[name.generic_string()] = ReadFile(entry.path());
    }
    return files;
}

int RunProgramWith(const std::vector<std::string>& words, const fs::path& output) {
#ifdef _WIN32
    std::string command = "\"\"" CORVID_RECAST "\"";
    for (const std::string& word : words)
        command += " \"" + word + '"';
    return std::system((command + " >\"" + output.string() + "\"\"").c_str()) & 0xFF;
#else
    std::string command = "'" CORVID_RECAST "'";
    for (const std::string& word : words)
        command += " '" + word + '\'';
    return WEXITSTATUS(std::system((command + " >'" + output.string() + '\'').c_str()));
#endif
}

class CasesTest : public ::testing::TestWithParam<std::string> {};

TEST_P(CasesTest, LeavesWhatIsExpected) {
    const fs::path folder = kCases / GetParam();
    const WorkingFolder working;
    const TemporaryFolder outside;
    fs::copy(folder, working.GetPath(), fs::copy_options::recursive);
    std::vector<std::string> words;
    std::istringstream lines(ReadFile(folder / "arguments"));
    for (std::string line; std::getline(lines, line);)
        words.push_back(line);

    EXPECT_EQ(std::to_string(RunProgramWith(words, outside.GetPath() / "stdout")) + '\n', ReadFile(folder / "status"));
    std::string output = outside.Get("stdout");
    output = std::regex_replace(output, std::regex("0x[0-9a-f]+ is"), "0xADDRESS is");
    output = std::regex_replace(output, std::regex(", line [0-9]+\\)"), ", line N)");
    EXPECT_EQ(output, ReadFile(folder / "stdout"));

    std::map<std::string, std::string> expected = ReadFiles(folder / "expected");
    expected.merge(ReadFiles(folder));
    EXPECT_EQ(ReadFiles(working.GetPath()), expected);
}

std::set<std::string> ListCases() {
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(kCases)) {
        if (entry.is_directory())
            names.insert(entry.path().filename().string());
    }
    return names;
}

INSTANTIATE_TEST_SUITE_P(Recast, CasesTest, ::testing::ValuesIn(ListCases()),
                         [](const auto& row) { return row.param; });

} // namespace
} // namespace Corvid
