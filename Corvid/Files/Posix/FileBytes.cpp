#include "Corvid/Files/FileBytes.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

#include "Corvid/Batch/Interrupt.h"
#include "Corvid/Files/SystemError.h"
#include "Engine/File/Posix/Descriptor.h"

namespace Corvid {

namespace {

constexpr std::size_t kFirstBytes = 64 * 1024;
constexpr std::size_t kMostBytes = std::size_t{1} << 31; // of what has no size, such as a pipe
constexpr std::size_t kRoomBehind = 128;                 // whoever reads the bytes in place pads them: no copy for that

constexpr const char* kNoFile = "not a file";
constexpr int kGlanceMilliseconds = 100; // between looks for a signal, which wakes one thread only

// False, with EINTR, when the run is to be stopped.
bool AwaitInput(int number) {
    pollfd wanted{number, POLLIN, 0};
    for (;;) {
        const int ready = poll(&wanted, 1, kGlanceMilliseconds);
        if (ready > 0 || (ready < 0 && errno != EINTR))
            return true; // what is wrong, a read will say
        if (IsInterrupted()) {
            errno = EINTR;
            return false;
        }
    }
}

// The bytes up to the end; `size` is what the system says, and may be wrong by now. `waits`: of what may have no input
// yet, such as a pipe.
ReadResult ReadAll(int number, std::size_t size, bool waits) {
    ReadResult result;
    result.m_Bytes.reserve(size + kRoomBehind);
    result.m_Bytes.resize(size > 0 ? size + 1 : kFirstBytes); // one more than there are: the end shows at once
    std::size_t taken = 0;
    for (;;) {
        const bool isReady = !waits || AwaitInput(number);
        const ssize_t count = isReady ? read(number, result.m_Bytes.data() + taken, result.m_Bytes.size() - taken) : -1;
        if (count == 0)
            break;
        if (count < 0) {
            if (isReady && (errno == EAGAIN || (errno == EINTR && !IsInterrupted())))
                continue;
            result.m_Error = LastSystemError();
            return result;
        }
        taken += static_cast<std::size_t>(count);
        if (taken == size) // of a file, it was asked for more: this is the end
            break;
        if (taken > kMostBytes) {
            result.m_Error = "there is no end to it";
            return result;
        }
        if (taken == result.m_Bytes.size())
            result.m_Bytes.resize(2 * taken);
    }
    result.m_Bytes.resize(taken);
    return result;
}

ReadResult ReadDescriptor(int number, bool isFileOnly) {
    ReadResult result;
    struct stat status;
    if (number < 0 || fstat(number, &status) != 0) {
        result.m_Error = LastSystemError();
        return result;
    }
    if (S_ISDIR(status.st_mode)) {
        result.m_Error = std::strerror(EISDIR);
        return result;
    }
    const bool isFile = S_ISREG(status.st_mode);
    if (isFileOnly && !isFile) {
        result.m_Error = kNoFile;
        return result;
    }
    return ReadAll(number, isFile ? static_cast<std::size_t>(status.st_size) : 0, !isFile);
}

ReadResult ReadPath(const std::string& path, bool isFileOnly) {
    constexpr int kFlags = O_RDONLY | O_CLOEXEC | O_NOCTTY;
    Descriptor file(open(path.c_str(), kFlags | O_NONBLOCK)); // a pipe is waited for by its input
    if (!file.IsOpen() && errno == EWOULDBLOCK)               // a file that another program has on a lease
        file = Descriptor(open(path.c_str(), kFlags));
    return ReadDescriptor(file.Get(), isFileOnly);
}

} // namespace

ReadResult ReadFileBytes(const std::string& path) {
    return ReadPath(path, false);
}

ReadResult ReadFoundFile(const std::string& path) {
    return ReadPath(path, true);
}

ReadResult ReadStandardInput() {
    return ReadDescriptor(STDIN_FILENO, false);
}

} // namespace Corvid
