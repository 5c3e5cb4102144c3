#include "Engine/File/Retry.h"

#include "Engine/File/Windows/WindowsApi.h"

namespace Corvid {

std::int64_t MonotonicMicroseconds() {
    return static_cast<std::int64_t>(GetTickCount64()) * 1000;
}

void PauseBetweenAttempts() {
    Sleep(5);
}

} // namespace Corvid
