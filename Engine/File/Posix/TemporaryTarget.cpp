#include <fcntl.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdint>
#include <utility>

#include "Engine/File/Posix/Descriptor.h"
#include "Engine/File/Posix/DestinationTargets.h"
#include "Engine/File/TemporaryName.h"

namespace Corvid {

namespace {

std::uint64_t RandomNumber() {
    std::uint64_t number = 0;
    if (getrandom(&number, sizeof number, GRND_NONBLOCK) != static_cast<ssize_t>(sizeof number))
        number = static_cast<std::uint64_t>(std::chrono::steady_clock::now().time_since_epoch().count()) *
                 0x9E3779B97F4A7C15; // early in a system's start
    return number;
}

std::string FolderOf(const std::string& path) {
    return path.substr(0, path.rfind('/') + 1); // npos + 1 is 0: no folder
}

// Calls `take` with names in the folder of `path` until one was free; false when none could be taken.
template <class Take> bool TakeTemporaryName(const std::string& path, Take take) {
    for (int i = 0; i < kMostTemporaryNames; ++i) {
        const TemporaryName name = MakeTemporaryName(static_cast<std::uint32_t>(getpid()), RandomNumber());
        if (take(FolderOf(path) + name.data()))
            return true;
        if (errno != EEXIST)
            return false;
    }
    return false;
}

// What is written stands in a temporary, which then takes the destination's name in one step. A full disk or a size
// limit fails a write; the temporary then goes. Two runs have a temporary each.
//
// Where the system has files without a name, the temporary is one until all bytes are in it: a kill while writing
// leaves nothing. Elsewhere it leaves the temporary. The destination stands as it was either way.
class TemporaryTarget final : public DestinationTarget {
public:
    // `name` is empty where the file has none.
    TemporaryTarget(Descriptor file, std::string name, std::string path, int patienceMilliseconds)
        : m_File(std::move(file)),
          m_Name(std::move(name)),
          m_Path(std::move(path)),
          m_PatienceMilliseconds(patienceMilliseconds) {}

    ~TemporaryTarget() override {
        if (!m_Name.empty())
            unlink(m_Name.c_str());
    }

    std::size_t Write(const char* bytes, std::size_t count) override { return WriteFully(m_File.Get(), bytes, count); }
    int Close() override;

private:
    bool LinkTo(const std::string& name) const;
    int CopyTo(DestinationTarget* target) const;

    // For a file that is written but not renamed over: a mount point, or another user's in a sticky folder.
    int CopyInPlace() const;

    Descriptor m_File;
    std::string m_Name; // empty before there is one, and again when it is the destination's
    std::string m_Path;
    int m_PatienceMilliseconds;
};

std::unique_ptr<DestinationTarget> MakeNamedTarget(const std::string& path, const Descriptor* replaced,
                                                   int patienceMilliseconds);

int TemporaryTarget::Close() {
    // A file server may refuse bytes as late as at a close; here the destination can still be kept.
    if (const int result = Descriptor(fcntl(m_File.Get(), F_DUPFD_CLOEXEC, STDERR_FILENO + 1)).Close(); result != 0)
        return result;
    if (m_Name.empty()) {
        if (LinkTo(m_Path))
            return 0; // there was no such file
        const bool isNamed = TakeTemporaryName(m_Path, [this](const std::string& name) {
            if (!LinkTo(name))
                return false;
            m_Name = name;
            return true;
        });
        if (!isNamed) // some systems give no name to such a file after all
            return CopyTo(MakeNamedTarget(m_Path, &m_File, m_PatienceMilliseconds).get());
    }
    if (rename(m_Name.c_str(), m_Path.c_str()) != 0)
        return CopyInPlace();
    m_Name.clear();
    return 0;
}

bool TemporaryTarget::LinkTo(const std::string& name) const {
    // Without a special right, systems allow this for files of one's own since late only.
    if (linkat(m_File.Get(), "", AT_FDCWD, name.c_str(), AT_EMPTY_PATH) == 0)
        return true;
    if (errno == EEXIST)
        return false;
    // Of this thread: another one may have a table of descriptors of its own.
    const std::string file = "/proc/thread-self/fd/" + std::to_string(m_File.Get());
    return linkat(AT_FDCWD, file.c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW) == 0;
}

int TemporaryTarget::CopyInPlace() const {
    Descriptor destination = OpenDescriptor(m_Path, O_WRONLY | O_NOFOLLOW, 0, m_PatienceMilliseconds);
    struct stat status;
    if (!destination.IsOpen() || fstat(destination.Get(), &status) != 0 || !S_ISREG(status.st_mode))
        return -1;
    return CopyTo(MakeInPlaceTarget(std::move(destination), m_PatienceMilliseconds).get());
}

int TemporaryTarget::CopyTo(DestinationTarget* target) const {
    char buffer[16384];
    for (off_t offset = 0; target != nullptr;) {
        const ssize_t count = pread(m_File.Get(), buffer, sizeof buffer, offset);
        if (count == 0)
            return target->Close();
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0 || target->Write(buffer, static_cast<std::size_t>(count)) != static_cast<std::size_t>(count))
            return -1;
        offset += count;
    }
    return -1;
}

// A file with an access list says more about its readers than its mode does.
bool CopyAccessList(int from, int to) {
    constexpr const char* kAccessList = "system.posix_acl_access";
    char list[4096];
    const ssize_t size = fgetxattr(from, kAccessList, list, sizeof list);
    if (size < 0)
        return errno != ERANGE; // most files and many file systems have none
    return size == 0 || fsetxattr(to, kAccessList, list, static_cast<std::size_t>(size), 0) == 0;
}

// Owner first: changing it clears the set-user-ID bit of the mode.
bool CopyAccess(int from, int to) {
    struct stat old, made;
    if (fstat(from, &old) != 0 || fstat(to, &made) != 0)
        return false;
    if ((old.st_uid != made.st_uid || old.st_gid != made.st_gid) && fchown(to, old.st_uid, old.st_gid) != 0)
        return false;
    return fchmod(to, old.st_mode & 07777) == 0 && CopyAccessList(from, to);
}

// Null when the file could not get the access of the one that it replaces.
std::unique_ptr<DestinationTarget> MakeTarget(Descriptor file, std::string name, const std::string& path,
                                              const Descriptor* replaced, int patienceMilliseconds) {
    const int number = file.Get();
    auto target = std::make_unique<TemporaryTarget>(std::move(file), std::move(name), path, patienceMilliseconds);
    return replaced == nullptr || CopyAccess(replaced->Get(), number) ? std::move(target) : nullptr;
}

// Closed to others until it has the old file's access.
mode_t FirstMode(const Descriptor* replaced) {
    return replaced == nullptr ? 0666 : 0600;
}

std::unique_ptr<DestinationTarget> MakeNamedTarget(const std::string& path, const Descriptor* replaced,
                                                   int patienceMilliseconds) {
    Descriptor file;
    std::string name;
    const bool isMade = TakeTemporaryName(path, [&](const std::string& free) {
        file = OpenDescriptor(free, O_RDWR | O_CREAT | O_EXCL, FirstMode(replaced), patienceMilliseconds);
        name = free;
        return file.IsOpen();
    });
    return isMade ? MakeTarget(std::move(file), std::move(name), path, replaced, patienceMilliseconds) : nullptr;
}

} // namespace

std::unique_ptr<DestinationTarget> MakeTemporaryTarget(const std::string& path, const Descriptor* replaced,
                                                       int patienceMilliseconds) {
    const std::string folder = FolderOf(path);
    if (folder.size() == path.size())
        return nullptr; // a path ending in a slash names no file
    Descriptor unnamed =
        OpenDescriptor(folder.empty() ? "." : folder, O_RDWR | O_TMPFILE, FirstMode(replaced), patienceMilliseconds);
    return unnamed.IsOpen() ? MakeTarget(std::move(unnamed), std::string(), path, replaced, patienceMilliseconds)
                            : MakeNamedTarget(path, replaced, patienceMilliseconds);
}

} // namespace Corvid
