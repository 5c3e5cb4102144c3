#include <cstdint>
#include <utility>

#include "Engine/File/GrowingBuffer.h"
#include "Engine/File/Retry.h"
#include "Engine/File/Windows/DestinationTargets.h"

namespace Corvid {

namespace {

// Nothing is touched before Close(). There, a full disk shows while the part past the old end is written, and the old
// length is restored; two runs take turns by a lock. A kill during the copy leaves a mixture.
class InPlaceTarget final : public DestinationTarget {
public:
    InPlaceTarget(Handle file, int patienceMilliseconds)
        : m_File(std::move(file)), m_PatienceMilliseconds(patienceMilliseconds) {}

    std::size_t Write(const char* bytes, std::size_t count) override {
        return m_Bytes.Append(bytes, count) ? count : 0;
    }
    int Close() override { return LockFile() && RewriteFile() ? m_File.Close() : -1; }

private:
    bool LockFile() const;
    bool RewriteFile() const;
    bool SetLength(std::uint64_t length) const { return Seek(length) && SetEndOfFile(m_File.Get()); }
    bool Seek(std::uint64_t offset) const;
    bool WriteFrom(std::uint64_t begin) const;

    Handle m_File;
    int m_PatienceMilliseconds;
    GrowingBuffer m_Bytes;
};

bool InPlaceTarget::LockFile() const {
    return RetryFor(m_PatienceMilliseconds, [this] {
        // A byte that no file reaches: readers stay unhindered. Closing the file gives it back.
        OVERLAPPED place{};
        place.OffsetHigh = 0x7FFFFFFF;
        constexpr DWORD kFlags = LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY;
        if (LockFileEx(m_File.Get(), kFlags, 0, 1, 0, &place))
            return true;
        const DWORD error = GetLastError(); // where the file system knows no locks there is none to wait for
        return error != ERROR_LOCK_VIOLATION && error != ERROR_IO_PENDING;
    });
}

bool InPlaceTarget::RewriteFile() const {
    LARGE_INTEGER size{};
    if (!GetFileSizeEx(m_File.Get(), &size))
        return false;
    const auto oldSize = static_cast<std::uint64_t>(size.QuadPart);
    const std::uint64_t newSize = m_Bytes.GetSize();
    if (newSize > oldSize && !(SetLength(newSize) && WriteFrom(oldSize))) {
        SetLength(oldSize);
        return false;
    }
    return WriteFrom(0) && SetLength(newSize);
}

bool InPlaceTarget::Seek(std::uint64_t offset) const {
    LARGE_INTEGER place{};
    place.QuadPart = static_cast<LONGLONG>(offset);
    return SetFilePointerEx(m_File.Get(), place, nullptr, FILE_BEGIN);
}

bool InPlaceTarget::WriteFrom(std::uint64_t begin) const {
    const std::size_t count = m_Bytes.GetSize() - static_cast<std::size_t>(begin);
    return Seek(begin) && WriteFully(m_File.Get(), m_Bytes.GetBytes() + begin, count) == count;
}

} // namespace

std::unique_ptr<DestinationTarget> MakeInPlaceTarget(Handle destination, int patienceMilliseconds) {
    return std::make_unique<InPlaceTarget>(std::move(destination), patienceMilliseconds);
}

} // namespace Corvid
