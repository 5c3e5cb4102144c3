#include "Engine/File/Retry.h"

#include <ctime>

namespace Corvid {

std::int64_t MonotonicMicroseconds() {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return std::int64_t(now.tv_sec) * 1000000 + now.tv_nsec / 1000;
}

void PauseBetweenAttempts() {
    const timespec pause{0, 5 * 1000 * 1000};
    nanosleep(&pause, nullptr);
}

} // namespace Corvid
