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

// A pipe whose owner made it non-blocking has nothing yet, or no writer yet.
bool HasNothingYet(DWORD error) {
    return error == ERROR_NO_DATA || error == ERROR_PIPE_LISTENING;
}

} // namespace

bool SourceFile::Open(std::u16string_view path) {
    Close();
    Handle file = OpenHandle(SystemPath(path), GENERIC_READ, OPEN_EXISTING, kPatienceMilliseconds);
    if (!file.IsOpen())
        return false;
    LARGE_INTEGER size{};
    const bool isFile = GetFileType(file.Get()) == FILE_TYPE_DISK;
    m_IsRegular = isFile && GetFileSizeEx(file.Get(), &size) && size.QuadPart > 0;
    m_Size = m_IsRegular ? static_cast<std::uint64_t>(size.QuadPart) : 0;
    m_BytesRead = 0;
    m_Error = SourceError::None;
    m_IsAtEnd = false;
    m_Handle = reinterpret_cast<std::intptr_t>(file.Release());
    return true;
}

std::size_t SourceFile::ReadSome(char* bytes, std::size_t capacity) {
    constexpr std::size_t kMostAtOnce = 1 << 24;
    const HANDLE file = ToHandle(m_Handle);
    const DWORD wanted = static_cast<DWORD>(std::min(capacity, kMostAtOnce));
    DWORD count = 0, error = ERROR_SUCCESS;
    while (!ReadFile(file, bytes, wanted, &count, nullptr)) {
        error = GetLastError();
        if (!HasNothingYet(error))
            break;
        error = ERROR_SUCCESS;
        std::this_thread::sleep_for(kPauseBetweenAttempts);
    }
    m_IsAtEnd = error != ERROR_SUCCESS || count == 0;
    if (error != ERROR_SUCCESS && error != ERROR_BROKEN_PIPE && error != ERROR_HANDLE_EOF)
        m_Error = SourceError::Failed;
    return error == ERROR_SUCCESS ? count : 0;
}

int SourceFile::Close() {
    Handle file(ToHandle(m_Handle));
    m_Handle = reinterpret_cast<std::intptr_t>(INVALID_HANDLE_VALUE);
    m_IsAtEnd = true;
    return file.Close();
}

} // namespace Corvid
