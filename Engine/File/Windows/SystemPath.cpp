#include "Engine/File/Windows/SystemPath.h"

#include "Engine/File/NativePath.h"
#include "Engine/File/Windows/WindowsApi.h"

namespace Corvid {

std::wstring SystemPath(std::wstring_view path) {
    constexpr std::size_t kLongestPlain = MAX_PATH - 13; // where a folder could no longer be made
    constexpr std::wstring_view kShare = L"\\\\";
    std::wstring plain(path);
    const bool isMarked = plain.starts_with(L"\\\\?\\") || plain.starts_with(L"\\\\.\\");
    // A relative path is short by itself, but counts with its folder.
    const bool isAbsolute = plain.size() > 2 && (plain[1] == L':' || plain.starts_with(kShare));
    if (isMarked || plain.empty() || (isAbsolute && plain.size() < kLongestPlain))
        return plain;
    const DWORD capacity = GetFullPathNameW(plain.c_str(), 0, nullptr, nullptr);
    if (capacity < kLongestPlain)
        return plain;
    std::wstring whole(capacity, L'\0');
    const DWORD length = GetFullPathNameW(plain.c_str(), capacity, whole.data(), nullptr);
    if (length == 0 || length >= capacity)
        return plain;
    whole.resize(length);
    return whole.starts_with(kShare) ? L"\\\\?\\UNC\\" + whole.substr(kShare.size()) : L"\\\\?\\" + whole;
}

std::wstring SystemPath(std::u16string_view path) {
    return SystemPath(NativeFromPath(path));
}

} // namespace Corvid
