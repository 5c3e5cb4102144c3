#include "Engine/File/OpenDestination.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <string>
#include <utility>

#include "Engine/File/NativePath.h"
#include "Engine/File/Posix/Descriptor.h"
#include "Engine/File/Posix/DestinationTargets.h"

namespace Corvid {

namespace {

constexpr int kMostLinks = 40; // as many as the system follows itself

// What the last part of `path` finally links to, existing or not; empty when that cannot be told.
std::string FollowLinks(std::string path) {
    char text[PATH_MAX];
    for (int links = 0; links <= kMostLinks; ++links) {
        const ssize_t length = readlink(path.c_str(), text, sizeof text);
        if (length < 0)
            return errno == EINVAL || errno == ENOENT ? path : std::string(); // not a link, or nothing yet
        if (length == 0 || length == sizeof text)
            break;
        if (text[0] == '/')
            path.clear();
        path.resize(path.rfind('/') + 1); // npos + 1 is 0: no folder
        path.append(text, static_cast<std::size_t>(length));
    }
    return std::string();
}

bool IsSameFile(const std::string& path, const struct stat& status) {
    struct stat found;
    return lstat(path.c_str(), &found) == 0 && found.st_dev == status.st_dev && found.st_ino == status.st_ino;
}

} // namespace

std::unique_ptr<DestinationTarget> OpenDestination(std::u16string_view path, int patienceMilliseconds) {
    const std::string name = NativeFromPath(path);
    const int named = DescriptorNamedBy(name);
    Descriptor existing = OpenDescriptor(name, O_WRONLY, 0, patienceMilliseconds);
    if (!existing.IsOpen() && errno == ENOENT && named < 0)
        return MakeTemporaryTarget(FollowLinks(name), nullptr, patienceMilliseconds);

    const bool isShared = !existing.IsOpen();
    if (isShared) {
        const int error = errno;
        existing = DuplicateDescriptor(named, O_WRONLY);
        errno = error; // why the path does not open
    }
    struct stat status;
    if (!existing.IsOpen() || fstat(existing.Get(), &status) != 0)
        return nullptr;
    if (!S_ISREG(status.st_mode))
        return MakeDirectTarget(std::move(existing), isShared, patienceMilliseconds);
    if (isShared)
        return nullptr; // its position and its append mode are another process's

    // A file known by its descriptor may have lost its name, and whoever opened it expects to find the bytes there.
    if (status.st_nlink <= 1 && named < 0) {
        const std::string target = FollowLinks(name);
        if (target == name || IsSameFile(target, status))
            if (auto temporary = MakeTemporaryTarget(target, &existing, patienceMilliseconds))
                return temporary;
    }
    return MakeInPlaceTarget(std::move(existing), patienceMilliseconds);
}

std::unique_ptr<DestinationTarget> OpenNewDestination(std::u16string_view path, int patienceMilliseconds) {
    return MakeTemporaryTarget(NativeFromPath(path), nullptr, patienceMilliseconds);
}

} // namespace Corvid
