#pragma once

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <set>
#include <string>

namespace Corvid {

// A folder of its own for one test, removed with all it holds.
class TemporaryFolder {
public:
    TemporaryFolder() {
        std::random_device random;
        do
            m_Path = std::filesystem::temp_directory_path() / ("corvid-test-" + std::to_string(random()));
        while (!std::filesystem::create_directory(m_Path));
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(m_Path, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    std::filesystem::path GetPath() const { return m_Path; }
    std::string GetName(const std::string& file) const { return (m_Path / file).string(); }
    std::u16string operator/(const std::string& file) const { return (m_Path / file).u16string(); }

    void Put(const std::string& file, const std::string& content) const {
        std::ofstream(m_Path / file, std::ios::binary) << content;
    }
    std::string Get(const std::string& file) const {
        std::ifstream stream(m_Path / file, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    }
    std::set<std::string> List() const {
        std::set<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(m_Path))
            names.insert(entry.path().filename().string());
        return names;
    }

private:
    std::filesystem::path m_Path;
};

} // namespace Corvid
