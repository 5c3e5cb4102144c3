#include "Corvid/Files/FileStatus.h"

#include <cerrno>
#include <cstdlib>
#include <memory>

#include "Corvid/Files/Posix/SystemStatus.h"
#include "Engine/File/NativePath.h"

namespace Corvid {

FileStatus StatusFromSystem(const struct stat& found) {
    FileStatus status;
    status.m_Type = S_ISREG(found.st_mode)   ? FileType::File
                    : S_ISDIR(found.st_mode) ? FileType::Folder
                                             : FileType::Other;
    status.m_Identity = {found.st_dev, found.st_ino};
    status.m_Size = S_ISREG(found.st_mode) ? static_cast<std::uint64_t>(found.st_size) : 0;
    status.m_Modified = std::int64_t{found.st_mtim.tv_sec} * 1'000'000'000 + found.st_mtim.tv_nsec;
    return status;
}

std::u16string EnginePath(const std::string& path) {
    return PathFromNative(path);
}

std::optional<FileStatus> GetFileStatus(const std::string& path) {
    struct stat found;
    return stat(path.c_str(), &found) == 0 ? std::optional(StatusFromSystem(found)) : std::nullopt;
}

std::optional<FileStatus> GetStatusOfName(const std::string& path) {
    struct stat found;
    if (lstat(path.c_str(), &found) != 0)
        return errno == ENOENT ? std::nullopt : std::optional(FileStatus());
    return S_ISLNK(found.st_mode) ? GetFileStatus(path).value_or(FileStatus()) : StatusFromSystem(found);
}

std::optional<std::string> TargetOfLink(const std::string& path) {
    struct stat found;
    if (lstat(path.c_str(), &found) != 0 || !S_ISLNK(found.st_mode))
        return std::nullopt;
    const std::unique_ptr<char, decltype(&std::free)> target(realpath(path.c_str(), nullptr), &std::free);
    return target != nullptr ? std::optional<std::string>(target.get()) : std::nullopt;
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
