#pragma once

#include <cstdint>

namespace Corvid {

std::int64_t MonotonicMicroseconds();
void PauseBetweenAttempts(); // a few milliseconds

// Calls `attempt` until it returns true; false when the patience has run out. The first call is always made.
template <class Attempt> bool RetryFor(int patienceMilliseconds, Attempt attempt) {
    if (attempt())
        return true;
    const std::int64_t end = MonotonicMicroseconds() + std::int64_t(patienceMilliseconds) * 1000;
    while (MonotonicMicroseconds() < end) {
        PauseBetweenAttempts();
        if (attempt())
            return true;
    }
    return false;
}

} // namespace Corvid
