#include "Corvid/Files/FileList.h"

#include <algorithm>
#include <charconv>
#include <map>
#include <set>
#include <string_view>

#include "Corvid/Files/FailureLine.h"
#include "Corvid/Files/FileBytes.h"
#include "Corvid/Files/FileStatus.h"
#include "Corvid/Files/FolderListing.h"
#include "Corvid/Files/PrintedPath.h"
#include "Corvid/Files/SystemError.h"
#include "Kinds/Kind.h"

namespace Corvid {

namespace {

std::string WithoutLastSeparators(std::string path) {
    while (path.size() > 1 && IsPathSeparator(path.back()))
        path.pop_back();
    return path;
}

// The way below the working folder, "." and ".." resolved; nothing for a path that leaves it.
std::optional<std::string> WayBelow(std::string_view path) {
    std::vector<std::string_view> parts;
    while (!path.empty()) {
        const std::size_t end =
            static_cast<std::size_t>(std::find_if(path.begin(), path.end(), IsPathSeparator) - path.begin());
        const std::string_view part = path.substr(0, end);
        path.remove_prefix(std::min(end + 1, path.size()));
        if (part.empty() || part == ".")
            continue;
        if (part != "..") {
            parts.push_back(part);
        } else if (parts.empty()) {
            return std::nullopt;
        } else {
            parts.pop_back();
        }
    }
    std::string way;
    for (const std::string_view part : parts)
        way.append(way.empty() ? "" : "/").append(part);
    return way;
}

bool IsAbsolute(std::string_view path) {
    const bool hasDrive = sizeof(wchar_t) == 2 && path.size() > 1 && path[1] == ':';
    return hasDrive || (!path.empty() && IsPathSeparator(path.front()));
}

// The paths of a list: one per line with LF or CR LF, or one up to each NUL.
std::vector<std::string> PathsOf(std::string_view list, bool isByNul) {
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF"; // which some shells put in front
    if (!isByNul && list.starts_with(kByteOrderMark))
        list.remove_prefix(kByteOrderMark.size());
    std::vector<std::string> paths;
    while (!list.empty()) {
        const std::size_t end = std::min(list.find(isByNul ? '\0' : '\n'), list.size());
        std::string_view path = list.substr(0, end);
        list.remove_prefix(std::min(end + 1, list.size()));
        if (!isByNul && path.ends_with('\r'))
            path.remove_suffix(1);
        if (!path.empty())
            paths.emplace_back(path);
    }
    return paths;
}

bool IsTaken(const FolderEntry& entry) {
    const bool mayBeFile = entry.m_Type == FolderEntry::Type::File || entry.m_Type == FolderEntry::Type::Link;
    const std::size_t dot = entry.m_Name.rfind('.');
    return mayBeFile && !entry.m_Name.starts_with('.') && dot != std::string::npos &&
           KindFromFileName(EnginePath(entry.m_Name.substr(dot - 1))); // of a long name, its end is enough
}

class Finder {
public:
    Finder(FileList& list, const std::string& destination, int jobs)
        : m_List(list), m_Destination(WithoutLastSeparators(destination)), m_Jobs(jobs) {}

    void AddGiven(const std::string& path, bool isFromList);

private:
    void AddFolder(const std::string& folder, const std::string& prefix, const std::string& name);
    bool AddFound(std::string path, std::string name, std::optional<FileStatus> status); // false: it is no file
    void AddFile(std::string path, std::string name, const FileStatus& status);
    void AddError(std::string path, std::string name, bool isFolder = false);
    bool IsDestination(const FileIdentity& identity);

    FileList& m_List;
    std::string m_Destination;
    int m_Jobs;
    std::optional<FileIdentity> m_DestinationIdentity;
    // A file is known by its folder and its name there. A link that a folder holds is a file of its own; one that is
    // given is the file that it leads to, too.
    using Entry = std::pair<FileIdentity, std::string>;
    static std::optional<Entry> EntryOf(const std::string& path);
    bool TakeEntry(const std::string& path); // false: it is taken already
    bool IsTakenAlready(const std::string& path);
    bool IsGiven(const std::optional<FileStatus>& folder, const std::string& name) const;

    std::set<Entry> m_Entries;                                  // that were given
    std::map<FileIdentity, std::vector<std::string>> m_Folders; // that were searched, and what they gave, by name
};

void Finder::AddGiven(const std::string& path, bool isFromList) {
    if (path == kStandardInputPath) {
        ListedFile file;
        file.m_Path = path;
        m_List.m_Files.push_back(std::move(file));
        return;
    }
    if (path.find('\0') != path.npos) {
        ListedFile file;
        file.m_Error = "the path holds a NUL; -0 reads a list whose paths end with one each";
        file.m_Path = file.m_Name = path;
        m_List.m_Files.push_back(std::move(file));
        return;
    }
    std::string name(LastName(path));
    const std::optional<FileStatus> status = GetFileStatus(path);
    if (status && status->m_Type == FileType::Folder) {
        m_List.m_Folders.push_back(path);
        m_List.m_HasFolders = true;
        std::string folder = WithoutLastSeparators(path);
        const bool isRoot = folder.size() == 1 && IsPathSeparator(folder[0]);
        const std::string prefix = folder == "." ? "" : isRoot ? folder : folder + "/";
        AddFolder(path, prefix, "");
        return;
    }
    if (isFromList && !IsAbsolute(path)) {
        std::optional<std::string> way = WayBelow(path);
        if (!way && m_List.m_ClimbingPath.empty())
            m_List.m_ClimbingPath = path;
        name = way.value_or(name);
    }
    if (!status)
        AddError(path, name);
    else if (status->m_Type != FileType::File || !IsTakenAlready(path))
        AddFile(path, name, *status);
}

std::optional<Finder::Entry> Finder::EntryOf(const std::string& path) {
    const std::string name(LastName(path));
    const std::string folder = path.substr(0, path.size() - name.size());
    const std::optional<FileStatus> status = GetFileStatus(folder.empty() ? "." : folder);
    return status ? std::optional(Entry(status->m_Identity, name)) : std::nullopt;
}

bool Finder::TakeEntry(const std::string& path) {
    std::optional<Entry> entry = EntryOf(path);
    if (!entry)
        return true;
    const auto folder = m_Folders.find(entry->first);
    if (folder != m_Folders.end() && std::binary_search(folder->second.begin(), folder->second.end(), entry->second))
        return false;
    return m_Entries.insert(std::move(*entry)).second;
}

bool Finder::IsTakenAlready(const std::string& path) {
    bool isTaken = !TakeEntry(path);
    if (const std::optional<std::string> target = TargetOfLink(path))
        isTaken = !TakeEntry(*target) || isTaken;
    return isTaken;
}

void Finder::AddFolder(const std::string& folder, const std::string& prefix, const std::string& name) {
    const std::optional<FileStatus> status = GetFileStatus(folder);
    if (status && (IsDestination(status->m_Identity) && !name.empty()))
        return;
    if (status && !m_Folders.try_emplace(status->m_Identity).second)
        return; // given twice, or below another one that was given
    std::optional<std::vector<FolderEntry>> entries = ListFolder(folder, IsTaken, m_Jobs);
    if (!entries) {
        AddError(WithoutLastSeparators(folder), name, true);
        return;
    }
    const auto isBefore = [](const FolderEntry& a, const FolderEntry& b) { return a.m_Name < b.m_Name; };
    if (std::is_sorted(entries->rbegin(), entries->rend(), isBefore)) // some file systems tell the latest first
        std::reverse(entries->begin(), entries->end());
    else
        std::sort(entries->begin(), entries->end(), isBefore);
    std::vector<std::string> taken;
    taken.reserve(entries->size());
    if (entries->size() > m_List.m_Files.size())
        m_List.m_Files.reserve(m_List.m_Files.size() + entries->size());
    for (FolderEntry& entry : *entries) {
        if (entry.m_Name.starts_with('.'))
            continue;
        std::string path = prefix + entry.m_Name;
        std::string below = name.empty() ? entry.m_Name : name + "/" + entry.m_Name;
        if (entry.m_Type == FolderEntry::Type::Folder)
            AddFolder(path, path + "/", below);
        else if ((entry.m_Status || IsTaken(entry)) && !IsGiven(status, entry.m_Name) &&
                 AddFound(std::move(path), std::move(below), entry.m_Status))
            taken.push_back(std::move(entry.m_Name));
    }
    if (status)
        m_Folders[status->m_Identity] = std::move(taken);
}

bool Finder::IsGiven(const std::optional<FileStatus>& folder, const std::string& name) const {
    return folder && !m_Entries.empty() && m_Entries.contains({folder->m_Identity, name});
}

bool Finder::AddFound(std::string path, std::string name, std::optional<FileStatus> status) {
    if (!status)
        status = GetFileStatus(path); // for the reason, or because it is there by now
    if (!status)
        AddError(std::move(path), std::move(name));
    else if (status->m_Type == FileType::File)
        AddFile(std::move(path), std::move(name), *status);
    return status && status->m_Type == FileType::File;
}

void Finder::AddFile(std::string path, std::string name, const FileStatus& status) {
    ListedFile& file = m_List.m_Files.emplace_back();
    file.m_Path = std::move(path);
    file.m_Name = std::move(name);
    file.m_Identity = status.m_Identity;
    file.m_Size = status.m_Size;
    file.m_Modified = status.m_Modified;
    file.m_IsFile = status.m_Type == FileType::File;
}

void Finder::AddError(std::string path, std::string name, bool isFolder) {
    ListedFile file;
    file.m_Error = LastSystemError();
    file.m_Path = std::move(path);
    file.m_Name = std::move(name);
    file.m_IsFolder = isFolder;
    m_List.m_Files.push_back(std::move(file));
}

// Other runs may make the destination at any time, so its identity is asked for until there is one.
bool Finder::IsDestination(const FileIdentity& identity) {
    if (m_Destination.empty())
        return false;
    if (!m_DestinationIdentity) {
        if (const std::optional<FileStatus> status = GetFileStatus(m_Destination))
            m_DestinationIdentity = status->m_Identity;
    }
    return m_DestinationIdentity == identity;
}

} // namespace

std::string_view LastName(std::string_view path) {
    std::size_t start = path.size();
    while (start > 0 && !IsPathSeparator(path[start - 1]))
        --start;
    return path.substr(start);
}

bool Shard::Has(const std::string& path) const {
    return m_Count == 1 || HashOfPath(path) % m_Count == m_Number - 1;
}

std::optional<Shard> ShardFromText(const std::string& text) {
    Shard shard;
    const char* const end = text.data() + text.size();
    const auto number = std::from_chars(text.data(), end, shard.m_Number);
    if (number.ec != std::errc() || number.ptr == end || *number.ptr != '/')
        return std::nullopt;
    const auto count = std::from_chars(number.ptr + 1, end, shard.m_Count);
    if (count.ec != std::errc() || count.ptr != end || shard.m_Number < 1 || shard.m_Number > shard.m_Count)
        return std::nullopt;
    return shard;
}

std::size_t FileList::CountInShard() const {
    return static_cast<std::size_t>(
        std::count_if(m_Files.begin(), m_Files.end(), [](const ListedFile& file) { return file.m_IsInShard; }));
}

FileList FindFiles(const FileSelection& selection, const std::string& destination, int jobs) {
    FileList list;
    if (selection.m_Paths.empty() && !selection.m_ListPath) {
        list.m_UsageError = "no PATH is given";
        return list;
    }
    const auto countIn = [](const std::vector<std::string>& paths, const std::string& path) {
        return std::count(paths.begin(), paths.end(), path);
    };
    const bool isListFromInput = selection.m_ListPath == kStandardInputPath;
    const char* const kOnce = "standard input ('-') can be read only once";
    if (countIn(selection.m_Paths, kStandardInputPath) + isListFromInput > 1) {
        list.m_UsageError = kOnce;
        return list;
    }
    if (countIn(selection.m_Paths, {}) > 0 || selection.m_ListPath == "") {
        list.m_UsageError = selection.m_ListPath == "" ? "the FILE of --files-from is empty" : "a PATH is empty";
        return list;
    }
    std::vector<std::string> listed;
    if (selection.m_ListPath) {
        const ReadResult read = isListFromInput ? ReadStandardInput() : ReadFileBytes(*selection.m_ListPath);
        if (!read.m_Error.empty()) {
            list.m_ListError = FailureLine(*selection.m_ListPath, DiagnosticCode::CannotRead, read.m_Error);
            return list;
        }
        listed = PathsOf(read.m_Bytes, selection.m_IsListByNul);
        if (countIn(selection.m_Paths, kStandardInputPath) + countIn(listed, kStandardInputPath) + isListFromInput >
            1) {
            list.m_UsageError = kOnce;
            return list;
        }
    }
    Finder finder(list, destination, jobs);
    for (const std::string& path : selection.m_Paths)
        finder.AddGiven(path, false);
    for (const std::string& path : listed)
        finder.AddGiven(path, true);
    const auto isBefore = [](const ListedFile& a, const ListedFile& b) { return a.m_Path < b.m_Path; };
    if (!std::is_sorted(list.m_Files.begin(), list.m_Files.end(), isBefore)) // a folder gives them in order
        std::stable_sort(list.m_Files.begin(), list.m_Files.end(), isBefore);
    const auto isSame = [](const ListedFile& a, const ListedFile& b) { return a.m_Path == b.m_Path; };
    list.m_Files.erase(std::unique(list.m_Files.begin(), list.m_Files.end(), isSame), list.m_Files.end());
    if (selection.m_ListPath || list.m_Files.size() > 1)
        list.m_HasFolders = true;
    // No shard may pass over a folder that it cannot see into.
    for (ListedFile& file : list.m_Files)
        file.m_IsInShard = file.m_IsFolder || selection.m_Shard.Has(file.m_Path);
    return list;
}

} // namespace Corvid
