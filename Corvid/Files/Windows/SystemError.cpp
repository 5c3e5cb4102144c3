#include "Corvid/Files/SystemError.h"

#include "Engine/File/Windows/WindowsApi.h"
#include "Engine/String/Unicode.h"

namespace Corvid {

std::string LastSystemError() {
    const DWORD error = GetLastError();
    switch (error) { // in the words that other systems use, so that logs of a farm read alike
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
        return "No such file or directory";
    case ERROR_ACCESS_DENIED:
        return "Permission denied";
    case ERROR_DISK_FULL:
        return "No space left on device";
    default:
        break;
    }
    wchar_t text[512];
    DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, error, 0, text,
                                  sizeof text / sizeof *text, nullptr);
    while (length > 0 && (text[length - 1] <= L' ' || text[length - 1] == L'.'))
        --length;
    if (length == 0)
        return "error " + std::to_string(error);
    return ToUtf8(std::u16string(text, text + length));
}

} // namespace Corvid
