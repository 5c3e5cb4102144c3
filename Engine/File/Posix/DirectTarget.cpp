#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <climits>
#include <utility>

#include "Engine/File/Posix/Descriptor.h"
#include "Engine/File/Posix/DestinationTargets.h"

namespace Corvid {

namespace {

constexpr std::chrono::seconds kLongestWait(60); // all waits of one destination together

// What was written is gone: a kill or a failure leaves the reader with the beginning, and two runs mix as they come.
class DirectTarget final : public DestinationTarget {
public:
    DirectTarget(Descriptor file, bool isShared, int patienceMilliseconds)
        : m_File(std::move(file)), m_MayBlock(isShared), m_Patience(patienceMilliseconds) {}

    std::size_t Write(const char* bytes, std::size_t count) override;
    int Close() override { return m_File.Close(); }

private:
    Descriptor m_File;
    bool m_MayBlock; // another process shares the descriptor and its settings
    std::chrono::milliseconds m_Patience;
    std::chrono::microseconds m_WaitLeft = kLongestWait;
};

std::size_t DirectTarget::Write(const char* bytes, std::size_t count) {
    // A descriptor that is ready takes this much without blocking.
    const std::size_t most = m_MayBlock ? PIPE_BUF : count;
    std::size_t taken = 0;
    bool waits = m_MayBlock;
    while (taken < count) {
        if (waits && !AwaitOutput(m_File.Get(), m_Patience, m_WaitLeft))
            break;
        const ssize_t written = write(m_File.Get(), bytes + taken, std::min(most, count - taken));
        if (written > 0)
            taken += static_cast<std::size_t>(written);
        else if (written == 0 || (errno != EINTR && errno != EAGAIN))
            break;
        else
            waits = waits || errno == EAGAIN;
    }
    return taken;
}

} // namespace

std::unique_ptr<DestinationTarget> MakeDirectTarget(Descriptor destination, bool isShared, int patienceMilliseconds) {
    return std::make_unique<DirectTarget>(std::move(destination), isShared, patienceMilliseconds);
}

} // namespace Corvid
