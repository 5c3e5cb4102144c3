#include "Corvid/Terminal/StandardOutputs.h"

#include "Corvid/Files/SystemError.h"
#include "Engine/File/StandardStreams.h"
#include "Engine/File/Windows/Handle.h"

namespace Corvid {

namespace {

HANDLE HandleOf(StandardStream stream) {
    return GetStdHandle(stream == StandardStream::Output ? STD_OUTPUT_HANDLE : STD_ERROR_HANDLE);
}

} // namespace

// What is closed here fails when it is written to.
bool StandardOutput::IsClosed(StandardStream) {
    return false;
}

std::string StandardOutput::Write(std::string_view bytes) {
    bool isWritten;
    if (m_Stream == StandardStream::Output || IsTerminal()) {
        // Consoles take UTF-16, and both streams lead to the same one.
        isWritten = WriteStandardOutput(bytes.data(), bytes.size());
    } else {
        isWritten = WriteFully(HandleOf(m_Stream), bytes.data(), bytes.size()) == bytes.size();
    }
    if (isWritten)
        return {};
    m_HasLostReader = GetLastError() == ERROR_BROKEN_PIPE || GetLastError() == ERROR_NO_DATA;
    return LastSystemError();
}

bool StandardOutput::IsTerminal() const {
    constexpr DWORD kTakesSequences = 0x0004; // ENABLE_VIRTUAL_TERMINAL_PROCESSING
    DWORD mode = 0;
    const HANDLE handle = HandleOf(m_Stream);
    return GetConsoleMode(handle, &mode) != 0 && SetConsoleMode(handle, mode | kTakesSequences) != 0;
}

int StandardOutput::GetColumns() const {
    CONSOLE_SCREEN_BUFFER_INFO info;
    if (!GetConsoleScreenBufferInfo(HandleOf(m_Stream), &info))
        return 80;
    return info.srWindow.Right - info.srWindow.Left + 1;
}

} // namespace Corvid
