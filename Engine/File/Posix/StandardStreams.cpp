#include "Engine/File/StandardStreams.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/types.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

namespace Corvid {

void PrepareStandardStreams() {
    for (int stream = STDIN_FILENO; stream <= STDERR_FILENO; ++stream) {
        // A new descriptor gets the lowest free number: this one, since those below are open by now.
        if (fcntl(stream, F_GETFD) < 0 && open("/dev/null", O_RDWR) < 0)
            open("/", O_PATH); // holds the number, takes no bytes
    }
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
}

bool WriteStandardOutput(const char* bytes, std::size_t count) {
    while (count > 0) {
        const ssize_t written = write(STDOUT_FILENO, bytes, count);
        if (written > 0) {
            bytes += written;
            count -= static_cast<std::size_t>(written);
        } else if (written < 0 && errno == EAGAIN) {
            pollfd wanted{STDOUT_FILENO, POLLOUT, 0}; // the caller's stream is not ours to make blocking
            poll(&wanted, 1, -1);
        } else if (written == 0 || errno != EINTR) {
            return false;
        }
    }
    return true;
}

} // namespace Corvid
