#include "Engine/File/NativePath.h"

#include <sys/stat.h>

#include <cstdint>

#include "Engine/String/Unicode.h"

namespace Corvid {

namespace {

constexpr char16_t kFirstEscape = 0xDC80; // stands for the byte 80
constexpr char16_t kLastEscape = 0xDCFF;
constexpr std::string_view kEncodedReplacement = "\xEF\xBF\xBD";

} // namespace

std::u16string PathFromNative(std::string_view native) {
    std::u16string path;
    path.reserve(native.size());
    const char* position = native.data();
    const char* const end = position + native.size();
    while (position != end) {
        if (static_cast<std::uint8_t>(*position) < 0x80) { // most are
            path.push_back(static_cast<char16_t>(*position++));
            continue;
        }
        const char* const start = position;
        const char32_t character = DecodeUtf8(position, end);
        const std::string_view bytes(start, position);
        if (character != kReplacementCharacter || bytes == kEncodedReplacement) {
            AppendUtf16(path, character);
        } else {
            for (const char byte : bytes)
                path.push_back(static_cast<char16_t>(kFirstEscape + (static_cast<std::uint8_t>(byte) - 0x80)));
        }
    }
    return path;
}

std::string NativeFromPath(std::u16string_view path) {
    std::string native;
    native.reserve(path.size());
    const char16_t* position = path.data();
    const char16_t* const end = position + path.size();
    while (position != end) {
        if (*position < 0x80) {
            native.push_back(static_cast<char>(*position++));
        } else if (*position >= kFirstEscape && *position <= kLastEscape) {
            native.push_back(static_cast<char>(*position++ - kFirstEscape + 0x80));
        } else {
            char bytes[kMaxUtf8Bytes];
            native.append(bytes, EncodeUtf8(bytes, DecodeUtf16(position, end)));
        }
    }
    return native;
}

PathKind GetPathKind(std::u16string_view path) {
    struct stat status;
    if (stat(NativeFromPath(path).c_str(), &status) != 0)
        return PathKind::Missing;
    return S_ISDIR(status.st_mode) ? PathKind::Folder : PathKind::File;
}

bool IsSameFile(std::u16string_view path, std::u16string_view other) {
    struct stat status, otherStatus;
    return stat(NativeFromPath(path).c_str(), &status) == 0 && stat(NativeFromPath(other).c_str(), &otherStatus) == 0 &&
           status.st_dev == otherStatus.st_dev && status.st_ino == otherStatus.st_ino;
}

std::uint64_t GetFileSize(std::u16string_view path) {
    struct stat status;
    const bool isFile = stat(NativeFromPath(path).c_str(), &status) == 0 && S_ISREG(status.st_mode);
    return isFile ? static_cast<std::uint64_t>(status.st_size) : 0;
}

} // namespace Corvid
