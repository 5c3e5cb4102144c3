#include <fcntl.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <utility>

#include "Engine/File/Posix/Descriptor.h"
#include "Engine/File/Posix/DestinationTargets.h"
#include "Engine/File/Retry.h"
#include "Engine/File/TemporaryName.h"

namespace Corvid {

namespace {

// At a kill, the temporary stays behind and the destination stands as it was. A full disk or a size limit fails a
// write; the temporary then goes. Two runs have a temporary each, and each rename is one step.
class TemporaryTarget final : public DestinationTarget {
public:
    TemporaryTarget(Descriptor file, std::string name, std::string path, int patienceMilliseconds)
        : m_File(std::move(file)),
          m_Name(std::move(name)),
          m_Path(std::move(path)),
          m_PatienceMilliseconds(patienceMilliseconds) {}

    ~TemporaryTarget() override {
        m_File.Close();
        if (!m_Name.empty())
            unlink(m_Name.c_str());
    }

    std::size_t Write(const char* bytes, std::size_t count) override { return WriteFully(m_File.Get(), bytes, count); }

    int Close() override {
        if (const int result = m_File.Close(); result != 0)
            return result;
        if (rename(m_Name.c_str(), m_Path.c_str()) != 0)
            return CopyInPlace();
        m_Name.clear();
        return 0;
    }

private:
    // For a file that is written but not renamed over: a mount point, or another user's in a sticky folder.
    int CopyInPlace() const;

    Descriptor m_File;
    std::string m_Name; // empty once renamed
    std::string m_Path;
    int m_PatienceMilliseconds;
};

int TemporaryTarget::CopyInPlace() const {
    const Descriptor temporary = OpenDescriptor(m_Name, O_RDONLY | O_NOFOLLOW, 0, m_PatienceMilliseconds);
    Descriptor destination = OpenDescriptor(m_Path, O_WRONLY | O_NOFOLLOW, 0, m_PatienceMilliseconds);
    struct stat status;
    if (!temporary.IsOpen() || !destination.IsOpen() || fstat(destination.Get(), &status) != 0 ||
        !S_ISREG(status.st_mode))
        return -1;
    const auto target = MakeInPlaceTarget(std::move(destination), m_PatienceMilliseconds);
    char buffer[16384];
    for (;;) {
        const ssize_t count = read(temporary.Get(), buffer, sizeof buffer);
        if (count == 0)
            return target->Close();
        if (count > 0 && target->Write(buffer, static_cast<std::size_t>(count)) == static_cast<std::size_t>(count))
            continue;
        if (count > 0 || errno != EINTR)
            return -1;
    }
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

std::uint64_t RandomNumber() {
    std::uint64_t number = 0;
    if (getrandom(&number, sizeof number, GRND_NONBLOCK) != static_cast<ssize_t>(sizeof number))
        number = static_cast<std::uint64_t>(MonotonicMicroseconds()) * 0x9E3779B97F4A7C15; // early in a system's start
    return number;
}

} // namespace

std::unique_ptr<DestinationTarget> MakeTemporaryTarget(const std::string& path, const Descriptor* replaced,
                                                       int patienceMilliseconds) {
    const std::size_t folderLength = path.rfind('/') + 1; // npos + 1 is 0: no folder
    if (folderLength == path.size())
        return nullptr; // a path ending in a slash names no file
    for (int i = 0; i < kMostTemporaryNames; ++i) {
        const TemporaryName name = MakeTemporaryName(static_cast<std::uint32_t>(getpid()), RandomNumber());
        std::string temporary = path.substr(0, folderLength) + name.data();
        // Closed to others until it has the old file's access.
        const mode_t mode = replaced == nullptr ? 0666 : 0600;
        Descriptor file = OpenDescriptor(temporary, O_WRONLY | O_CREAT | O_EXCL, mode, patienceMilliseconds);
        if (file.IsOpen()) {
            const int number = file.Get();
            auto target =
                std::make_unique<TemporaryTarget>(std::move(file), std::move(temporary), path, patienceMilliseconds);
            if (replaced != nullptr && !CopyAccess(replaced->Get(), number))
                return nullptr;
            return target;
        }
        if (errno != EEXIST)
            return nullptr;
    }
    return nullptr;
}

} // namespace Corvid
