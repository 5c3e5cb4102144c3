#include "Engine/File/OpenDestination.h"

#include <string>
#include <utility>

#include "Engine/File/Windows/DestinationTargets.h"
#include "Engine/File/Windows/Handle.h"
#include "Engine/File/Windows/SystemPath.h"

namespace Corvid {

namespace {

bool IsLink(const std::wstring& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
}

// Where an open file really is; empty when its file system cannot tell.
std::wstring FinalPath(const Handle& file) {
    const DWORD capacity = GetFinalPathNameByHandleW(file.Get(), nullptr, 0, 0);
    std::wstring path(capacity, L'\0');
    const DWORD length = capacity == 0 ? 0 : GetFinalPathNameByHandleW(file.Get(), path.data(), capacity, 0);
    path.resize(length < capacity ? length : 0);
    return path;
}

// What a link that leads nowhere would lead to: only creating it for a moment tells.
std::wstring MissingLinkTarget(const std::wstring& link, int patienceMilliseconds) {
    const Handle made = OpenHandle(link, GENERIC_WRITE | DELETE, CREATE_NEW, patienceMilliseconds);
    std::wstring target;
    if (made.IsOpen()) {
        target = FinalPath(made);
        FILE_DISPOSITION_INFO disposition{TRUE};
        SetFileInformationByHandle(made.Get(), FileDispositionInfo, &disposition, sizeof disposition);
    }
    return target;
}

} // namespace

std::unique_ptr<DestinationTarget> OpenDestination(std::u16string_view path, int patienceMilliseconds) {
    const std::wstring name = SystemPath(path);
    Handle existing = OpenHandle(name, GENERIC_WRITE, OPEN_EXISTING, patienceMilliseconds);
    if (!existing.IsOpen()) {
        if (GetLastError() != ERROR_FILE_NOT_FOUND)
            return nullptr;
        const std::wstring target = IsLink(name) ? MissingLinkTarget(name, patienceMilliseconds) : name;
        return MakeTemporaryTarget(target, patienceMilliseconds);
    }
    if (GetFileType(existing.Get()) != FILE_TYPE_DISK)
        return MakeDirectTarget(std::move(existing), patienceMilliseconds);

    BY_HANDLE_FILE_INFORMATION information{};
    if (GetFileInformationByHandle(existing.Get(), &information) && information.nNumberOfLinks <= 1) {
        const std::wstring target = IsLink(name) ? FinalPath(existing) : name;
        if (auto temporary = MakeTemporaryTarget(target, patienceMilliseconds))
            return temporary; // the old file is closed before anything moves over it
    }
    return MakeInPlaceTarget(std::move(existing), patienceMilliseconds);
}

std::unique_ptr<DestinationTarget> OpenNewDestination(std::u16string_view path, int patienceMilliseconds) {
    return OpenDestination(path, patienceMilliseconds); // a look costs little here
}

} // namespace Corvid
