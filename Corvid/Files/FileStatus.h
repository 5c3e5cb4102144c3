#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>

namespace Corvid {

// Paths of the program are byte strings as the user gave them; on Windows, UTF-8. The engine's form of one:
std::u16string EnginePath(const std::string& path);

// Two names of one file have one identity, whatever links lead there.
struct FileIdentity {
    std::uint64_t m_Device = 0;
    std::uint64_t m_Number = 0;

    friend auto operator<=>(const FileIdentity&, const FileIdentity&) = default;
};

enum class FileType { File, Folder, Other };

struct FileStatus {
    FileType m_Type = FileType::Other;
    FileIdentity m_Identity;
    std::uint64_t m_Size = 0;    // bytes
    std::int64_t m_Modified = 0; // only to be compared

    friend bool operator==(const FileStatus&, const FileStatus&) = default;
};

// Of what the path finally leads to; nothing when that cannot be told, and LastSystemError() says why.
std::optional<FileStatus> GetFileStatus(const std::string& path);

// The same of what bears the name, where that is to be replaced: nothing when the name is free. What has a name and
// cannot be told, such as a link that leads nowhere, is Other.
std::optional<FileStatus> GetStatusOfName(const std::string& path);

// What a symbolic link finally leads to, as a whole path; nothing where the path is no link, or cannot be followed.
std::optional<std::string> TargetOfLink(const std::string& path);

// Makes the folder and those above it; false when it is not there afterwards.
bool MakeFolders(const std::string& path);

bool IsPathSeparator(char unit);

} // namespace Corvid
