#pragma once

#include <chrono>
#include <thread>

namespace Corvid {

inline constexpr std::chrono::milliseconds kPauseBetweenAttempts(5);

// Calls `attempt` until it returns true; false when the patience has run out. The first call is always made.
template <class Attempt> bool RetryFor(int patienceMilliseconds, Attempt attempt) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(patienceMilliseconds);
    while (!attempt()) {
        if (std::chrono::steady_clock::now() >= end)
            return false;
        std::this_thread::sleep_for(kPauseBetweenAttempts);
    }
    return true;
}

} // namespace Corvid
