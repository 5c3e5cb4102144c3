#pragma once

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <regex>
#include <string>
#include <vector>

#include "Recast/Program.h"
#include "Tests/Support/WorkingFolder.h"

namespace Corvid {

// A kind of file, with an example of it in text.
struct ExampleKind {
    const char16_t* m_Type;
    const char* m_Example;
};

inline constexpr ExampleKind kExampleKinds[] = {
    {u"mesh", "Mesh/cube.mesh"},
    {u"MESH", "Mesh/cube.mesh"},
    {u"particle", "Particle/ReactorBlast.particle"},
    {u"brushes", "Brushes/ConsolePanels.brushes"},
    {u"entity", "Entity/HullFragments.entity"},
};

inline std::string ReadExample(const char* name) {
    std::ifstream stream(std::string(CORVID_SOURCE_FOLDER "/Examples/") + name, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

// The program in process, in a folder of its own.
class ProgramFixture : public ::testing::Test {
protected:
    struct Result {
        int m_Status = 0;
        std::string m_Output; // line numbers of assertions are N
        friend bool operator==(const Result&, const Result&) = default;
    };

    static Result Run(const std::vector<std::u16string>& words) {
        struct StringSink final : TextSink {
            void WriteText(std::string_view utf8) override { m_Text += utf8; }
            std::string m_Text;
        } sink;
        std::vector<const char16_t*> arguments = {u"recast"};
        for (const std::u16string& word : words)
            arguments.push_back(word.c_str());
        const int status = RunProgram(arguments, sink);
        return {status, std::regex_replace(sink.m_Text, std::regex(", line [0-9]+\\)"), ", line N)")};
    }

    // What a run that must succeed has to say.
    static std::string Convert(const std::vector<std::u16string>& words) {
        const Result result = Run(words);
        EXPECT_EQ(result.m_Status, 0);
        return result.m_Output;
    }

    WorkingFolder m_Folder;
};

} // namespace Corvid
