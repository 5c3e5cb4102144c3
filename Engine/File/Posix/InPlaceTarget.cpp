#include <fcntl.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <limits>
#include <utility>

#include "Engine/File/GrowingBuffer.h"
#include "Engine/File/Posix/Descriptor.h"
#include "Engine/File/Posix/DestinationTargets.h"
#include "Engine/File/Retry.h"

namespace Corvid {

namespace {

// Nothing is touched before Close(). There, a full disk or a size limit shows while space is reserved, and the old
// length is restored; two runs take turns by a lock. A kill during the copy leaves a mixture.
class InPlaceTarget final : public DestinationTarget {
public:
    InPlaceTarget(Descriptor file, int patienceMilliseconds)
        : m_File(std::move(file)), m_PatienceMilliseconds(patienceMilliseconds) {}

    std::size_t Write(const char* bytes, std::size_t count) override {
        return m_Bytes.Append(bytes, count) ? count : 0;
    }
    int Close() override { return LockFile() && RewriteFile() ? m_File.Close() : -1; }

private:
    bool LockFile() const;
    bool RewriteFile() const;
    bool ReserveSpace(off_t oldSize, off_t newSize) const;
    bool WriteAt(off_t begin, off_t end) const;

    Descriptor m_File;
    int m_PatienceMilliseconds;
    GrowingBuffer m_Bytes;
};

bool InPlaceTarget::LockFile() const {
    return RetryFor(m_PatienceMilliseconds, [this] {
        // Where the file system knows no locks there is none to wait for.
        return flock(m_File.Get(), LOCK_EX | LOCK_NB) == 0 || (errno != EWOULDBLOCK && errno != EINTR);
    });
}

bool InPlaceTarget::RewriteFile() const {
    struct stat status;
    if (m_Bytes.GetSize() > static_cast<std::uintmax_t>(std::numeric_limits<off_t>::max()) ||
        fstat(m_File.Get(), &status) != 0)
        return false;
    const auto newSize = static_cast<off_t>(m_Bytes.GetSize());
    if (!ReserveSpace(status.st_size, newSize)) {
        static_cast<void>(ftruncate(m_File.Get(), status.st_size));
        return false;
    }
    return WriteAt(0, newSize) && ftruncate(m_File.Get(), newSize) == 0;
}

bool InPlaceTarget::ReserveSpace(off_t oldSize, off_t newSize) const {
    rlimit limit{};
    if (getrlimit(RLIMIT_FSIZE, &limit) == 0 && limit.rlim_cur != RLIM_INFINITY &&
        static_cast<rlim_t>(newSize) > limit.rlim_cur)
        return false; // holds for bytes within the old size, too
    if (newSize == 0)
        return true;
    int result;
    do
        result = fallocate(m_File.Get(), 0, 0, newSize);
    while (result != 0 && errno == EINTR);
    if (result == 0)
        return true;
    if (errno != EOPNOTSUPP && errno != ENOSYS && errno != EINVAL)
        return false;
    // Without reservations, what goes past the old end is written first; a file server may refuse as late as the sync.
    return newSize <= oldSize || (WriteAt(oldSize, newSize) && fdatasync(m_File.Get()) == 0);
}

bool InPlaceTarget::WriteAt(off_t begin, off_t end) const {
    while (begin < end) {
        const ssize_t written =
            pwrite(m_File.Get(), m_Bytes.GetBytes() + begin, static_cast<std::size_t>(end - begin), begin);
        if (written > 0)
            begin += written;
        else if (written == 0 || errno != EINTR)
            return false;
    }
    return true;
}

} // namespace

std::unique_ptr<DestinationTarget> MakeInPlaceTarget(Descriptor destination, int patienceMilliseconds) {
    return std::make_unique<InPlaceTarget>(std::move(destination), patienceMilliseconds);
}

} // namespace Corvid
