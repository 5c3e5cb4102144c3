#include "Corvid/Files/FileStatus.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdlib>
#include <memory>

#include "Corvid/Batch/Parts.h"
#include "Engine/File/NativePath.h"
#include "Engine/File/Posix/Descriptor.h"

namespace Corvid {

namespace {

struct FolderCloser {
    void operator()(DIR* folder) const { closedir(folder); }
};

FolderEntry::Type TypeOf(const dirent& entry, const std::string& folder) {
    switch (entry.d_type) {
    case DT_REG:
        return FolderEntry::Type::File;
    case DT_DIR:
        return FolderEntry::Type::Folder;
    case DT_LNK:
        return FolderEntry::Type::Link;
    case DT_UNKNOWN: // a file system that does not tell
        break;
    default:
        return FolderEntry::Type::Other;
    }
    struct stat status;
    if (lstat((folder + '/' + entry.d_name).c_str(), &status) != 0)
        return FolderEntry::Type::File; // reading it will say why
    if (S_ISDIR(status.st_mode))
        return FolderEntry::Type::Folder;
    if (S_ISLNK(status.st_mode))
        return FolderEntry::Type::Link;
    return S_ISREG(status.st_mode) ? FolderEntry::Type::File : FolderEntry::Type::Other;
}

FileStatus StatusOf(const struct stat& found) {
    FileStatus status;
    status.m_Type = S_ISREG(found.st_mode)   ? FileType::File
                    : S_ISDIR(found.st_mode) ? FileType::Folder
                                             : FileType::Other;
    status.m_Identity = {found.st_dev, found.st_ino};
    status.m_Size = S_ISREG(found.st_mode) ? static_cast<std::uint64_t>(found.st_size) : 0;
    status.m_Modified = std::int64_t{found.st_mtim.tv_sec} * 1'000'000'000 + found.st_mtim.tv_nsec;
    return status;
}

} // namespace

std::u16string EnginePath(const std::string& path) {
    return PathFromNative(path);
}

std::optional<FileStatus> GetFileStatus(const std::string& path) {
    struct stat found;
    return stat(path.c_str(), &found) == 0 ? std::optional(StatusOf(found)) : std::nullopt;
}

std::optional<FileStatus> GetStatusOfName(const std::string& path) {
    struct stat found;
    if (lstat(path.c_str(), &found) != 0)
        return errno == ENOENT ? std::nullopt : std::optional(FileStatus());
    return S_ISLNK(found.st_mode) ? GetFileStatus(path).value_or(FileStatus()) : StatusOf(found);
}

std::optional<std::string> TargetOfLink(const std::string& path) {
    struct stat found;
    if (lstat(path.c_str(), &found) != 0 || !S_ISLNK(found.st_mode))
        return std::nullopt;
    const std::unique_ptr<char, decltype(&std::free)> target(realpath(path.c_str(), nullptr), &std::free);
    return target != nullptr ? std::optional<std::string>(target.get()) : std::nullopt;
}

std::optional<std::vector<FolderEntry>> ListFolder(const std::string& path) {
    const std::unique_ptr<DIR, FolderCloser> folder(opendir(path.c_str()));
    if (folder == nullptr)
        return std::nullopt;
    std::vector<FolderEntry> entries;
    for (;;) {
        errno = 0;
        const dirent* const entry = readdir(folder.get());
        if (entry == nullptr)
            break;
        std::string name = entry->d_name;
        if (name == "." || name == "..")
            continue;
        entries.push_back({std::move(name), TypeOf(*entry, path)});
    }
    if (errno != 0)
        return std::nullopt;
    return entries;
}

std::vector<std::optional<FileStatus>> GetStatusesOf(const std::vector<FolderEntry>& entries, const std::string& folder,
                                                     bool (*wants)(const FolderEntry&), int jobs) {
    std::vector<std::optional<FileStatus>> statuses(entries.size());
    WorkInParts(entries.size(), kLeastStatusesOfThread, jobs, [&](std::size_t begin, std::size_t end) {
        // Threads that asked by one descriptor would wait for each other.
        const Descriptor own(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        for (std::size_t i = begin; i < end; ++i) {
            struct stat found;
            if (wants(entries[i]) && fstatat(own.Get(), entries[i].m_Name.c_str(), &found, 0) == 0)
                statuses[i] = StatusOf(found);
        }
    });
    return statuses;
}

bool MakeFolders(const std::string& path) {
    int error = 0; // why a folder was not made, which says more than that it is not there
    for (std::size_t end = path.find('/', 1);; end = path.find('/', end + 1)) {
        const std::string folder = path.substr(0, end);
        if (mkdir(folder.c_str(), 0777) != 0 && errno != EEXIST) {
            if (errno == ENOENT && error != 0) // the one above was not made
                break;
            error = errno;
            if (error != EROFS && error != EACCES) // which may be said of one that is there
                return false;
        }
        if (end == std::string::npos)
            break;
    }
    struct stat status;
    if (stat(path.c_str(), &status) != 0) {
        errno = error != 0 ? error : errno;
        return false;
    }
    errno = ENOTDIR;
    return S_ISDIR(status.st_mode);
}

bool IsPathSeparator(char unit) {
    return unit == '/';
}

} // namespace Corvid
