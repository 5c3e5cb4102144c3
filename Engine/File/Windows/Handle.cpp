#include "Engine/File/Windows/Handle.h"

#include <algorithm>

#include "Engine/File/Retry.h"

namespace Corvid {

namespace {

// A file that is being replaced denies access for a moment, and so does a read-only file or a folder for good.
bool IsDeniedForGood(const std::wstring& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes == INVALID_FILE_ATTRIBUTES ||
           (attributes & (FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_DIRECTORY)) != 0;
}

} // namespace

Handle& Handle::operator=(Handle&& other) noexcept {
    const HANDLE value = other.Release();
    Close();
    m_Value = value;
    return *this;
}

HANDLE Handle::Release() {
    const HANDLE value = m_Value;
    m_Value = INVALID_HANDLE_VALUE;
    return value;
}

int Handle::Close() {
    return !IsOpen() || CloseHandle(Release()) ? 0 : -1;
}

bool IsBusy(DWORD error) {
    return error == ERROR_SHARING_VIOLATION || error == ERROR_LOCK_VIOLATION || error == ERROR_USER_MAPPED_FILE ||
           error == ERROR_DELETE_PENDING || error == ERROR_PIPE_BUSY;
}

Handle OpenHandle(const std::wstring& path, DWORD access, DWORD disposition, int patienceMilliseconds,
                  SECURITY_ATTRIBUTES* security) {
    constexpr DWORD kShare = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    constexpr int kMostDenials = 20; // a tenth of a second
    Handle opened;
    DWORD error = 0;
    int denials = 0;
    RetryFor(patienceMilliseconds, [&] {
        opened = Handle(CreateFileW(path.c_str(), access, kShare, security, disposition,
                                    FILE_ATTRIBUTE_NORMAL | FILE_FLAG_SEQUENTIAL_SCAN, nullptr));
        error = opened.IsOpen() ? ERROR_SUCCESS : GetLastError();
        if (error == ERROR_ACCESS_DENIED)
            return IsDeniedForGood(path) || ++denials > kMostDenials;
        return !IsBusy(error);
    });
    SetLastError(error);
    return opened;
}

void LimitDeviceWaits(HANDLE device, int patienceMilliseconds) {
    COMMTIMEOUTS limits{};
    limits.ReadTotalTimeoutConstant = static_cast<DWORD>(patienceMilliseconds);
    limits.WriteTotalTimeoutConstant = static_cast<DWORD>(patienceMilliseconds);
    SetCommTimeouts(device, &limits);
}

std::size_t WriteFully(HANDLE file, const char* bytes, std::size_t count) {
    constexpr std::size_t kMostAtOnce = 1 << 24;
    std::size_t taken = 0;
    while (taken < count) {
        const DWORD wanted = static_cast<DWORD>(std::min(count - taken, kMostAtOnce));
        DWORD written = 0;
        if (!WriteFile(file, bytes + taken, wanted, &written, nullptr) || written == 0)
            break;
        taken += written;
    }
    return taken;
}

} // namespace Corvid
