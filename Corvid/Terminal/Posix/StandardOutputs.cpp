#include "Corvid/Terminal/StandardOutputs.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace Corvid {

namespace {

int NumberOf(StandardStream stream) {
    return stream == StandardStream::Output ? STDOUT_FILENO : STDERR_FILENO;
}

} // namespace

bool StandardOutput::IsClosed(StandardStream stream) {
    return fcntl(NumberOf(stream), F_GETFD) < 0;
}

std::string StandardOutput::Write(std::string_view bytes) {
    if (m_IsClosed)
        return std::strerror(EBADF);
    const int number = NumberOf(m_Stream);
    while (!bytes.empty()) {
        const ssize_t written = write(number, bytes.data(), bytes.size());
        if (written > 0) {
            bytes.remove_prefix(static_cast<std::size_t>(written));
        } else if (written < 0 && errno == EAGAIN) {
            pollfd wanted{number, POLLOUT, 0}; // the stream is not ours to make blocking
            poll(&wanted, 1, -1);
        } else if (written == 0 || errno != EINTR) {
            m_HasLostReader = errno == EPIPE;
            return std::strerror(errno);
        }
    }
    return {};
}

bool StandardOutput::IsTerminal() const {
    return isatty(NumberOf(m_Stream)) == 1;
}

int StandardOutput::GetColumns() const {
    winsize size{};
    return ioctl(NumberOf(m_Stream), TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : 80;
}

} // namespace Corvid
