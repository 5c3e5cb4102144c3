#include "Engine/File/StandardStreams.h"

#include <algorithm>

#include "Engine/File/Retry.h"
#include "Engine/File/Windows/Handle.h"

namespace Corvid {

namespace {

bool IsContinuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

// A console shows UTF-16, whatever its code page.
bool WriteConsoleText(HANDLE console, const char* bytes, std::size_t count) {
    constexpr std::size_t kMostAtOnce = 4096;
    wchar_t units[kMostAtOnce];
    while (count > 0) {
        std::size_t piece = std::min(count, kMostAtOnce);
        while (piece < count && piece > kMostAtOnce - 4 && IsContinuation(bytes[piece]))
            --piece; // no character is cut
        const int length = MultiByteToWideChar(CP_UTF8, 0, bytes, static_cast<int>(piece), units, kMostAtOnce);
        for (int shown = 0; shown < length;) {
            DWORD written = 0;
            if (!WriteConsoleW(console, units + shown, static_cast<DWORD>(length - shown), &written, nullptr) ||
                written == 0)
                return false;
            shown += static_cast<int>(written);
        }
        bytes += piece;
        count -= piece;
    }
    return true;
}

} // namespace

void PrepareStandardStreams() {
    // No dialog about a drive without a disk: nobody may be there to answer.
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX | SEM_NOOPENFILEERRORBOX);
    for (const DWORD stream : {STD_INPUT_HANDLE, STD_OUTPUT_HANDLE, STD_ERROR_HANDLE}) {
        const HANDLE handle = GetStdHandle(stream);
        // Closed input is not empty input: whoever reads it is told.
        const DWORD access = stream == STD_INPUT_HANDLE ? GENERIC_WRITE : GENERIC_READ | GENERIC_WRITE;
        if (handle == nullptr || handle == INVALID_HANDLE_VALUE)
            SetStdHandle(stream, OpenHandle(L"NUL", access, OPEN_EXISTING, 0).Release());
    }
}

bool WriteStandardOutput(const char* bytes, std::size_t count) {
    const HANDLE output = GetStdHandle(STD_OUTPUT_HANDLE);
    DWORD mode;
    if (GetConsoleMode(output, &mode))
        return WriteConsoleText(output, bytes, count);
    for (;;) {
        SetLastError(ERROR_SUCCESS);
        const std::size_t taken = WriteFully(output, bytes, count);
        bytes += taken;
        count -= taken;
        if (count == 0)
            return true;
        if (GetLastError() != ERROR_SUCCESS)
            return false;
        std::this_thread::sleep_for(kPauseBetweenAttempts); // a pipe that its owner made non-blocking is full
    }
}

} // namespace Corvid
