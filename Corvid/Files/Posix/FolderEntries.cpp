#include "Corvid/Files/FolderEntries.h"

#include <dirent.h>
#include <fcntl.h>

#include <cerrno>
#include <memory>
#include <string_view>

#include "Corvid/Files/Posix/SystemStatus.h"
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

} // namespace

bool ReadFolder(const std::string& path, const std::function<void(FolderEntry)>& take) {
    const std::unique_ptr<DIR, FolderCloser> folder(opendir(path.c_str()));
    if (folder == nullptr)
        return false;
    for (;;) {
        errno = 0;
        const dirent* const entry = readdir(folder.get());
        if (entry == nullptr)
            return errno == 0;
        const std::string_view name = entry->d_name;
        if (name != "." && name != "..")
            take({std::string(name), TypeOf(*entry, path), {}});
    }
}

void AskStatuses(std::span<FolderEntry> entries, const std::string& folder, bool (*wants)(const FolderEntry&)) {
    // Threads that asked by one descriptor would wait for each other.
    const Descriptor own(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    for (FolderEntry& entry : entries) {
        struct stat found;
        if (wants(entry) && fstatat(own.Get(), entry.m_Name.c_str(), &found, 0) == 0)
            entry.m_Status = StatusFromSystem(found);
    }
}

} // namespace Corvid
