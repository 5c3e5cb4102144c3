#pragma once

#include <cstddef>
#include <string>

#include "Engine/File/Windows/WindowsApi.h"

namespace Corvid {

// Owns a file handle.
class Handle {
public:
    Handle() = default;
    explicit Handle(HANDLE value) : m_Value(value) {}
    Handle(Handle&& other) noexcept : m_Value(other.Release()) {}
    Handle& operator=(Handle&& other) noexcept;
    ~Handle() { Close(); }

    bool IsOpen() const { return m_Value != INVALID_HANDLE_VALUE; }
    HANDLE Get() const { return m_Value; }
    HANDLE Release();
    int Close(); // 0 when the system closed it cleanly, or nothing was open

private:
    HANDLE m_Value = INVALID_HANDLE_VALUE;
};

// Whether `error` says that another program has the file just now: a scanner, an editor, another run.
bool IsBusy(DWORD error);

// Opens shared with everyone, without inheriting. A file that is busy is tried again for the patience. `path` is in
// the system's form. On failure GetLastError() says why.
Handle OpenHandle(const std::wstring& path, DWORD access, DWORD disposition, int patienceMilliseconds,
                  SECURITY_ATTRIBUTES* security = nullptr);

// Gives the waits of a serial port an end; nothing else takes it.
void LimitDeviceWaits(HANDLE device, int patienceMilliseconds);

// WriteFile() in full. The number of bytes taken; fewer after a failure or when the device takes no more now.
std::size_t WriteFully(HANDLE file, const char* bytes, std::size_t count);

} // namespace Corvid
