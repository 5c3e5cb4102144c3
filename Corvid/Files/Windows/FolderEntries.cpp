#include "Corvid/Files/FolderEntries.h"

#include "Engine/File/NativePath.h"
#include "Engine/File/Windows/Handle.h"
#include "Engine/File/Windows/SystemPath.h"
#include "Engine/String/Unicode.h"

namespace Corvid {

namespace {

struct SearchCloser {
    HANDLE m_Search;
    ~SearchCloser() { FindClose(m_Search); }
};

FolderEntry::Type TypeOf(DWORD attributes) {
    if ((attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0)
        return FolderEntry::Type::Link;
    return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0 ? FolderEntry::Type::Folder : FolderEntry::Type::File;
}

} // namespace

bool ReadFolder(const std::string& path, const std::function<void(FolderEntry)>& take) {
    WIN32_FIND_DATAW found;
    const HANDLE search = FindFirstFileW((SystemPath(EnginePath(path + "/")) + L"*").c_str(), &found);
    if (search == INVALID_HANDLE_VALUE)
        return false;
    const SearchCloser closer{search};
    do {
        std::string name = ToUtf8(PathFromNative(found.cFileName));
        if (name != "." && name != "..")
            take({std::move(name), TypeOf(found.dwFileAttributes), {}});
    } while (FindNextFileW(search, &found));
    return GetLastError() == ERROR_NO_MORE_FILES;
}

void AskStatuses(std::span<FolderEntry> entries, const std::string& folder, bool (*wants)(const FolderEntry&)) {
    for (FolderEntry& entry : entries) {
        if (wants(entry))
            entry.m_Status = GetFileStatus(folder + "/" + entry.m_Name);
    }
}

} // namespace Corvid
