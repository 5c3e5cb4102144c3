#include "Engine/File/NativePath.h"

#include "Engine/File/Windows/Handle.h"
#include "Engine/File/Windows/SystemPath.h"

namespace Corvid {

static_assert(sizeof(wchar_t) == sizeof(char16_t));

std::u16string PathFromNative(std::wstring_view native) {
    return std::u16string(native.begin(), native.end());
}

std::wstring NativeFromPath(std::u16string_view path) {
    return std::wstring(path.begin(), path.end());
}

PathKind GetPathKind(std::u16string_view path) {
    const std::wstring name = SystemPath(path);
    const DWORD attributes = GetFileAttributesW(name.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES)
        return PathKind::Missing;
    if (attributes & FILE_ATTRIBUTE_DIRECTORY)
        return PathKind::Folder;
    if (attributes & FILE_ATTRIBUTE_REPARSE_POINT) { // a link, which may lead nowhere
        const Handle target = OpenHandle(name, 0, OPEN_EXISTING, 0);
        return target.IsOpen() || GetLastError() == ERROR_SHARING_VIOLATION ? PathKind::File : PathKind::Missing;
    }
    return PathKind::File;
}

bool IsSameFile(std::u16string_view path, std::u16string_view other) {
    const Handle file = OpenHandle(SystemPath(path), 0, OPEN_EXISTING, 0);
    const Handle otherFile = OpenHandle(SystemPath(other), 0, OPEN_EXISTING, 0);
    BY_HANDLE_FILE_INFORMATION status{}, otherStatus{};
    return GetFileInformationByHandle(file.Get(), &status) &&
           GetFileInformationByHandle(otherFile.Get(), &otherStatus) &&
           status.dwVolumeSerialNumber == otherStatus.dwVolumeSerialNumber &&
           status.nFileIndexHigh == otherStatus.nFileIndexHigh && status.nFileIndexLow == otherStatus.nFileIndexLow;
}

std::uint64_t GetFileSize(std::u16string_view path) {
    WIN32_FILE_ATTRIBUTE_DATA data;
    if (!GetFileAttributesExW(SystemPath(path).c_str(), GetFileExInfoStandard, &data) ||
        (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0)
        return 0;
    return std::uint64_t{data.nFileSizeHigh} << 32 | data.nFileSizeLow;
}

} // namespace Corvid
