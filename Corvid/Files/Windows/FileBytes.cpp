#include "Corvid/Files/FileBytes.h"

#include <algorithm>
#include <cstring>

#include "Corvid/Files/FileStatus.h"
#include "Corvid/Files/SystemError.h"
#include "Engine/File/Windows/Handle.h"
#include "Engine/File/Windows/SystemPath.h"

namespace Corvid {

namespace {

constexpr int kPatienceMilliseconds = 5000;
constexpr DWORD kMostAtOnce = 16 * 1024 * 1024;

ReadResult ReadAll(HANDLE file) {
    ReadResult result;
    LARGE_INTEGER size{};
    std::size_t taken = 0;
    result.m_Bytes.resize(GetFileSizeEx(file, &size) ? static_cast<std::size_t>(size.QuadPart) + 1 : 64 * 1024);
    for (;;) {
        if (taken == result.m_Bytes.size())
            result.m_Bytes.resize(2 * taken);
        const DWORD wanted = static_cast<DWORD>(std::min<std::size_t>(result.m_Bytes.size() - taken, kMostAtOnce));
        DWORD count = 0;
        if (!ReadFile(file, result.m_Bytes.data() + taken, wanted, &count, nullptr)) {
            if (GetLastError() == ERROR_BROKEN_PIPE || GetLastError() == ERROR_HANDLE_EOF)
                break; // the writer has closed its end
            result.m_Error = LastSystemError();
            break;
        }
        if (count == 0)
            break;
        taken += count;
    }
    result.m_Bytes.resize(taken);
    return result;
}

} // namespace

ReadResult ReadFileBytes(const std::string& path) {
    const std::optional<FileStatus> status = GetFileStatus(path);
    if (status && status->m_Type == FileType::Folder)
        return {{}, "Is a directory"};
    const Handle file = OpenHandle(SystemPath(EnginePath(path)), GENERIC_READ, OPEN_EXISTING, kPatienceMilliseconds);
    if (!file.IsOpen())
        return {{}, LastSystemError()};
    return ReadAll(file.Get());
}

ReadResult ReadFoundFile(const std::string& path) {
    const std::optional<FileStatus> status = GetFileStatus(path);
    return status && status->m_Type == FileType::Other ? ReadResult{{}, "not a file"} : ReadFileBytes(path);
}

ReadResult ReadStandardInput() {
    return ReadAll(GetStdHandle(STD_INPUT_HANDLE));
}

} // namespace Corvid
