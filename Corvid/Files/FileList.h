#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Corvid/Files/FileStatus.h"

namespace Corvid {

// The K-th of N parts of all files, by the hash of their printed paths.
struct Shard {
    std::uint64_t m_Number = 1; // from 1
    std::uint64_t m_Count = 1;

    bool Has(const std::string& path) const;
};

// "K/N" with 1 <= K <= N; nothing for anything else.
std::optional<Shard> ShardFromText(const std::string& text);

// What a command line says about the files of a run.
struct FileSelection {
    std::vector<std::string> m_Paths;
    std::optional<std::string> m_ListPath; // of --files-from
    bool m_IsListByNul = false;
    Shard m_Shard;
};

// The part of a path behind its last separator.
std::string_view LastName(std::string_view path);

inline constexpr const char* kStandardInputPath = "-";

// One file of a run, or what stands in its place in the output.
struct ListedFile {
    std::string m_Path;  // as it is printed and opened
    std::string m_Error; // not empty: cannot be read, as the system says
    std::string m_Name;  // where it goes below a destination folder
    FileIdentity m_Identity;
    std::uint64_t m_Size = 0;
    std::int64_t m_Modified = 0;
    bool m_IsFile = false; // when it was found; otherwise a pipe, a device or standard input
    bool m_IsInShard = true;
    bool m_IsFolder = false; // one that cannot be searched

    bool IsStandardInput() const { return m_Path == kStandardInputPath; }
};

struct FileList {
    std::vector<ListedFile> m_Files;    // bytewise by path, those of other shards, too
    std::string m_UsageError;           // not empty: the run ends
    std::string m_ListError;            // not empty: the list cannot be read; a line that says so
    bool m_HasFolders = false;          // a folder was given, or several files, or a list
    std::vector<std::string> m_Folders; // that were given
    // A path out of a list that leaves the working folder: it has no place below a destination.
    std::string m_ClimbingPath;

    std::size_t CountInShard() const;
};

// Finds the files of a run, on up to `jobs` threads. What lies inside `destination` (empty: none) is left out of
// folders.
FileList FindFiles(const FileSelection& selection, const std::string& destination, int jobs = 1);

} // namespace Corvid
