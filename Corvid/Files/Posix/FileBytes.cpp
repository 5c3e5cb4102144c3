#include "Corvid/Files/FileBytes.h"

#include <fcntl.h>
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

// The bytes up to the end; `size` is what the system says, and may be wrong by now.
ReadResult ReadAll(int number, std::size_t size) {
    ReadResult result;
    result.m_Bytes.reserve(size + kRoomBehind);
    result.m_Bytes.resize(size > 0 ? size + 1 : kFirstBytes); // one more than there are: the end shows at once
    std::size_t taken = 0;
    for (;;) {
        const ssize_t count = read(number, result.m_Bytes.data() + taken, result.m_Bytes.size() - taken);
        if (count == 0)
            break;
        if (count < 0) {
            if (errno == EINTR && !IsInterrupted())
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

ReadResult ReadDescriptor(int number) {
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
    return ReadAll(number, S_ISREG(status.st_mode) ? static_cast<std::size_t>(status.st_size) : 0);
}

} // namespace

ReadResult ReadFileBytes(const std::string& path) {
    const Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY));
    return ReadDescriptor(file.Get());
}

ReadResult ReadStandardInput() {
    return ReadDescriptor(STDIN_FILENO);
}

} // namespace Corvid
