#include "Corvid/Files/FileStatus.h"

#include "Engine/File/NativePath.h"
#include "Engine/File/Windows/Handle.h"
#include "Engine/File/Windows/SystemPath.h"
#include "Engine/String/Unicode.h"

namespace Corvid {

namespace {

std::uint64_t Whole(DWORD high, DWORD low) {
    return std::uint64_t{high} << 32 | low;
}

} // namespace

std::u16string EnginePath(const std::string& path) {
    return ToUtf16(path);
}

std::optional<FileStatus> GetFileStatus(const std::string& path) {
    // Folders open only with backup semantics.
    const Handle file(CreateFileW(SystemPath(EnginePath(path)).c_str(), FILE_READ_ATTRIBUTES,
                                  FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                                  FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    BY_HANDLE_FILE_INFORMATION found;
    if (!file.IsOpen() || !GetFileInformationByHandle(file.Get(), &found))
        return std::nullopt;
    FileStatus status;
    const bool isFolder = (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    status.m_Type = isFolder ? FileType::Folder : FileType::File;
    status.m_Identity = {found.dwVolumeSerialNumber, Whole(found.nFileIndexHigh, found.nFileIndexLow)};
    status.m_Size = isFolder ? 0 : Whole(found.nFileSizeHigh, found.nFileSizeLow);
    status.m_Modified =
        static_cast<std::int64_t>(Whole(found.ftLastWriteTime.dwHighDateTime, found.ftLastWriteTime.dwLowDateTime));
    return status;
}

std::optional<FileStatus> GetStatusOfName(const std::string& path) {
    return GetFileStatus(path).value_or(FileStatus()); // whether a device bears it cannot be told
}

std::optional<std::string> TargetOfLink(const std::string& path) {
    const DWORD attributes = GetFileAttributesW(SystemPath(EnginePath(path)).c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0)
        return std::nullopt;
    const Handle file(CreateFileW(SystemPath(EnginePath(path)).c_str(), FILE_READ_ATTRIBUTES,
                                  FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                                  FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    std::wstring target(32 * 1024, L'\0'); // the longest path there is
    const DWORD length =
        file.IsOpen() ? GetFinalPathNameByHandleW(file.Get(), target.data(), static_cast<DWORD>(target.size()), 0) : 0;
    if (length == 0 || length >= target.size())
        return std::nullopt;
    target.resize(length);
    return ToUtf8(PathFromNative(target));
}

bool MakeFolders(const std::string& path) {
    for (std::size_t end = path.find_first_of("/\\", 1);; end = path.find_first_of("/\\", end + 1)) {
        CreateDirectoryW(SystemPath(EnginePath(path.substr(0, end))).c_str(), nullptr);
        if (end == std::string::npos)
            break;
    }
    const std::optional<FileStatus> status = GetFileStatus(path);
    if (status && status->m_Type != FileType::Folder)
        SetLastError(ERROR_DIRECTORY);
    return status && status->m_Type == FileType::Folder;
}

bool IsPathSeparator(char unit) {
    return unit == '/' || unit == '\\';
}

} // namespace Corvid
