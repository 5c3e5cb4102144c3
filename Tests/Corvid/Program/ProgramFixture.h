#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "Corvid/Program.h"
#include "Tests/Support/WorkingFolder.h"

namespace Corvid {

class TextInMemory final : public TextOutput {
public:
    std::string Write(std::string_view bytes) override {
        m_Text += bytes;
        return {};
    }
    bool HasLostReader() const override { return false; }

    std::string m_Text;
};

// Runs of the program in a folder of their own, in process.
class ProgramFixture : public ::testing::Test {
protected:
    struct Run {
        int m_Status = 0;
        std::string m_Out;
        std::string m_Err;
    };

    static Run Corvid(std::vector<std::string> arguments) {
        TextInMemory out;
        TextInMemory errors;
        Run run;
        {
            Console console(out, errors);
            run.m_Status = RunCorvid(std::move(arguments), console);
        }
        run.m_Out = out.m_Text;
        run.m_Err = errors.m_Text;
        return run;
    }

    static void Put(const std::string& path, const std::string& bytes) {
        if (const auto folder = std::filesystem::path(path).parent_path(); !folder.empty())
            std::filesystem::create_directories(folder);
        std::ofstream(path, std::ios::binary) << bytes;
    }
    static std::string Get(const std::string& path) {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    static bool Exists(const std::string& path) { return std::filesystem::exists(path); }
    static std::string Example(const std::string& name) {
        return Get(std::string(CORVID_SOURCE_FOLDER) + "/Examples/" + name);
    }

    static constexpr const char* kShards = "TXT\r\nentityType \"Debris\"\r\n";

    WorkingFolder m_Folder;
};

} // namespace Corvid
