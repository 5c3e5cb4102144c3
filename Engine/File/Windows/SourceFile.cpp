#include "Engine/File/SourceFile.h"

#include <algorithm>

#include "Engine/File/Retry.h"
#include "Engine/File/Windows/Handle.h"
#include "Engine/File/Windows/SystemPath.h"

namespace Corvid {

namespace {

HANDLE ToHandle(std::intptr_t value) {
    return reinterpret_cast<HANDLE>(value);
}

// Whether a read will return at once: something has come, or nothing can come any more.
bool IsReadable(HANDLE file) {
    if (GetFileType(file) == FILE_TYPE_PIPE) {
        DWORD available = 0;
        return !PeekNamedPipe(file, nullptr, 0, nullptr, &available, nullptr) || available > 0;
    }
    DWORD mode;
    return !GetConsoleMode(file, &mode) || WaitForSingleObject(file, 0) != WAIT_TIMEOUT;
}

} // namespace

bool SourceFile::Open(std::u16string_view path) {
    Close();
    Handle file = OpenHandle(SystemPath(path), GENERIC_READ, OPEN_EXISTING, m_Bounds.PatienceMilliseconds);
    if (!file.IsOpen())
        return false;
    LARGE_INTEGER size{};
    const bool isFile = GetFileType(file.Get()) == FILE_TYPE_DISK;
    m_IsRegular = isFile && GetFileSizeEx(file.Get(), &size) && size.QuadPart > 0;
    m_Size = m_IsRegular ? static_cast<std::uint64_t>(size.QuadPart) : 0;
    m_MayBlock = !isFile;
    if (m_MayBlock)
        LimitDeviceWaits(file.Get(), m_Bounds.PatienceMilliseconds);
    m_BytesRead = 0;
    m_Error = SourceError::None;
    m_IsAtEnd = false;
    m_WaitLeft = std::int64_t(kLongestWaitMilliseconds) * 1000;
    m_Handle = reinterpret_cast<std::intptr_t>(file.Release());
    return true;
}

std::size_t SourceFile::ReadSome(char* bytes, std::size_t capacity) {
    constexpr std::size_t kMostAtOnce = 1 << 24;
    const HANDLE file = ToHandle(m_Handle);
    if (m_MayBlock) {
        const std::int64_t start = MonotonicMicroseconds();
        const int patience = static_cast<int>(std::min<std::int64_t>(m_Bounds.PatienceMilliseconds, m_WaitLeft / 1000));
        const bool isReadable = RetryFor(patience, [file] { return IsReadable(file); });
        m_WaitLeft = std::max<std::int64_t>(m_WaitLeft - (MonotonicMicroseconds() - start), 0);
        if (!isReadable) {
            m_IsAtEnd = true;
            m_Error = SourceError::Silent;
            return 0;
        }
    }
    DWORD count = 0;
    const bool hasRead = ReadFile(file, bytes, static_cast<DWORD>(std::min(capacity, kMostAtOnce)), &count, nullptr);
    const DWORD error = hasRead ? ERROR_SUCCESS : GetLastError();
    m_IsAtEnd = !hasRead || count == 0;
    if (error != ERROR_SUCCESS && error != ERROR_BROKEN_PIPE && error != ERROR_HANDLE_EOF)
        m_Error = SourceError::Failed;
    return hasRead ? count : 0;
}

int SourceFile::Close() {
    Handle file(ToHandle(m_Handle));
    m_Handle = reinterpret_cast<std::intptr_t>(INVALID_HANDLE_VALUE);
    m_IsAtEnd = true;
    return file.Close();
}

} // namespace Corvid
