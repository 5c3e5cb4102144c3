#include <utility>

#include "Engine/File/Retry.h"
#include "Engine/File/Windows/DestinationTargets.h"

namespace Corvid {

namespace {

// What was written is gone: a kill or a failure leaves the reader with the beginning, and two runs mix as they come.
class DirectTarget final : public DestinationTarget {
public:
    DirectTarget(Handle file, int patienceMilliseconds)
        : m_File(std::move(file)), m_PatienceMilliseconds(patienceMilliseconds) {
        LimitDeviceWaits(m_File.Get(), patienceMilliseconds);
        DWORD mode = PIPE_NOWAIT; // a full pipe takes nothing instead of waiting; what is no pipe stays as it is
        SetNamedPipeHandleState(m_File.Get(), &mode, nullptr, nullptr);
    }

    std::size_t Write(const char* bytes, std::size_t count) override;
    int Close() override { return m_File.Close(); }

private:
    Handle m_File;
    int m_PatienceMilliseconds;
};

std::size_t DirectTarget::Write(const char* bytes, std::size_t count) {
    // A full pipe refuses a piece that it could take in parts, so the pieces are small.
    constexpr std::size_t kPiece = 4096;
    std::size_t taken = 0;
    while (taken < count) {
        const std::size_t wanted = count - taken < kPiece ? count - taken : kPiece;
        std::size_t written = 0;
        const bool hasProgress = RetryFor(m_PatienceMilliseconds, [&] {
            SetLastError(ERROR_SUCCESS);
            written = WriteFully(m_File.Get(), bytes + taken, wanted);
            return written > 0 || GetLastError() != ERROR_SUCCESS;
        });
        taken += written;
        if (!hasProgress || written == 0)
            break;
    }
    return taken;
}

} // namespace

std::unique_ptr<DestinationTarget> MakeDirectTarget(Handle destination, int patienceMilliseconds) {
    return std::make_unique<DirectTarget>(std::move(destination), patienceMilliseconds);
}

} // namespace Corvid
