#include "Engine/File/StandardStreams.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/types.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <iterator>

namespace Corvid {

void PrepareStandardStreams() {
    pollfd streams[] = {{STDIN_FILENO, 0, 0}, {STDOUT_FILENO, 0, 0}, {STDERR_FILENO, 0, 0}};
    poll(streams, std::size(streams), 0); // tells of closed ones in one call
    for (const pollfd& stream : streams) {
        // A new descriptor gets the lowest free number: this one, since those below are open by now. Closed input is
        // not empty input: whoever reads it is told.
        const int access = stream.fd == STDIN_FILENO ? O_WRONLY : O_RDWR;
        if ((stream.revents & POLLNVAL) != 0 && open("/dev/null", access) < 0)
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
