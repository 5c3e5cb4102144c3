#include "Engine/File/Posix/Descriptor.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <string_view>

#include "Engine/File/Retry.h"

namespace Corvid {

namespace {

bool IsFifo(const std::string& path) {
    struct stat status;
    return stat(path.c_str(), &status) == 0 && S_ISFIFO(status.st_mode);
}

} // namespace

Descriptor& Descriptor::operator=(Descriptor&& other) noexcept {
    const int number = other.Release();
    Close();
    m_Number = number;
    return *this;
}

int Descriptor::Release() {
    const int number = m_Number;
    m_Number = -1;
    return number;
}

int Descriptor::Close() {
    if (!IsOpen())
        return 0;
    const int result = close(Release());
    return result != 0 && errno == EINTR ? 0 : result; // interrupted, but closed all the same
}

Descriptor OpenDescriptor(const std::string& path, int flags, mode_t mode, int patienceMilliseconds) {
    Descriptor opened;
    int error = 0;
    const bool decided = RetryFor(patienceMilliseconds, [&] {
        do
            opened = Descriptor(open(path.c_str(), flags | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, mode));
        while (!opened.IsOpen() && errno == EINTR);
        error = opened.IsOpen() ? 0 : errno;
        return error != EWOULDBLOCK && !(error == ENXIO && IsFifo(path));
    });
    errno = decided ? error : ETIMEDOUT;
    return opened;
}

int DescriptorNamedBy(const std::string& path) {
    constexpr std::string_view kStandardStreams[] = {"/dev/stdin", "/dev/stdout", "/dev/stderr"};
    for (int stream = STDIN_FILENO; stream <= STDERR_FILENO; ++stream)
        if (path == kStandardStreams[stream])
            return stream;
    for (const std::string_view folder : {"/dev/fd/", "/proc/self/fd/"}) {
        if (!path.starts_with(folder))
            continue;
        int number = -1;
        const char* const end = path.data() + path.size();
        const auto [rest, error] = std::from_chars(path.data() + folder.size(), end, number);
        return error == std::errc() && rest == end ? number : -1;
    }
    return -1;
}

Descriptor DuplicateDescriptor(int number, int access) {
    const int flags = fcntl(number, F_GETFL);
    if (flags < 0 || ((flags & O_ACCMODE) != access && (flags & O_ACCMODE) != O_RDWR))
        return Descriptor();
    return Descriptor(fcntl(number, F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
}

void AwaitInput(int number) {
    pollfd wanted{number, POLLIN, 0};
    while (poll(&wanted, 1, -1) < 0 && errno == EINTR)
        continue;
}

bool AwaitOutput(int number, std::chrono::milliseconds patience, std::chrono::microseconds& budget) {
    using std::chrono::steady_clock;
    const auto start = steady_clock::now();
    const auto longest = std::min<std::chrono::microseconds>(patience, budget);
    auto waited = std::chrono::microseconds::zero();
    int ready = 0;
    do {
        pollfd wanted{number, POLLOUT, 0};
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(longest - waited);
        ready = poll(&wanted, 1, static_cast<int>(left.count()));
        waited = std::chrono::duration_cast<std::chrono::microseconds>(steady_clock::now() - start);
    } while (ready < 0 && errno == EINTR && waited < longest);
    budget = std::max(budget - waited, std::chrono::microseconds::zero());
    return ready > 0;
}

std::size_t WriteFully(int number, const char* bytes, std::size_t count) {
    std::size_t taken = 0;
    while (taken < count) {
        const ssize_t written = write(number, bytes + taken, count - taken);
        if (written > 0)
            taken += static_cast<std::size_t>(written);
        else if (written == 0 || errno != EINTR)
            break;
    }
    return taken;
}

} // namespace Corvid
