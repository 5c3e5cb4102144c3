#include "Engine/File/NativePath.h"

#include <sys/stat.h>

#include <cstddef>
#include <cstdint>

namespace Corvid {

namespace {

constexpr char16_t kFirstEscape = 0xDC80; // stands for the byte 80
constexpr char16_t kLastEscape = 0xDCFF;
constexpr char32_t kReplacement = 0xFFFD;

bool IsHighSurrogate(char16_t unit) {
    return (unit & 0xFC00) == 0xD800;
}
bool IsLowSurrogate(char16_t unit) {
    return (unit & 0xFC00) == 0xDC00;
}

// The length of the well-formed sequence at the front of `bytes` and its code point; 0 when there is none.
std::size_t DecodeSequence(std::string_view bytes, char32_t& codePoint) {
    const auto first = static_cast<std::uint8_t>(bytes[0]);
    if (first < 0x80) {
        codePoint = first;
        return 1;
    }
    const std::size_t length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
    if (first < 0xC2 || first > 0xF4 || bytes.size() < length)
        return 0;
    codePoint = static_cast<char32_t>(first & (0x7F >> length));
    for (std::size_t i = 1; i < length; ++i) {
        const auto next = static_cast<std::uint8_t>(bytes[i]);
        if ((next & 0xC0) != 0x80)
            return 0;
        codePoint = codePoint << 6 | (next & 0x3Fu);
    }
    const bool isOverlong = codePoint < (length == 4 ? 0x10000u : length == 3 ? 0x800u : 0x80u);
    const bool isSurrogate = codePoint >= 0xD800 && codePoint <= 0xDFFF;
    return isOverlong || isSurrogate || codePoint > 0x10FFFF ? 0 : length;
}

void AppendUtf8(std::string& bytes, char32_t codePoint) {
    const auto append = [&bytes](char32_t byte) { bytes.push_back(static_cast<char>(byte)); };
    if (codePoint < 0x80) {
        append(codePoint);
        return;
    }
    if (codePoint < 0x800) {
        append(0xC0 | codePoint >> 6);
    } else {
        if (codePoint < 0x10000) {
            append(0xE0 | codePoint >> 12);
        } else {
            append(0xF0 | codePoint >> 18);
            append(0x80 | (codePoint >> 12 & 0x3F));
        }
        append(0x80 | (codePoint >> 6 & 0x3F));
    }
    append(0x80 | (codePoint & 0x3F));
}

} // namespace

std::u16string PathFromNative(std::string_view native) {
    std::u16string path;
    path.reserve(native.size());
    while (!native.empty()) {
        char32_t codePoint = 0;
        const std::size_t length = DecodeSequence(native, codePoint);
        if (length == 0) {
            const unsigned byte = static_cast<std::uint8_t>(native[0]);
            path.push_back(static_cast<char16_t>(kFirstEscape + (byte - 0x80)));
        } else if (codePoint >= 0x10000) {
            path.push_back(static_cast<char16_t>(0xD800 + ((codePoint - 0x10000) >> 10)));
            path.push_back(static_cast<char16_t>(0xDC00 + (codePoint & 0x3FF)));
        } else {
            path.push_back(static_cast<char16_t>(codePoint));
        }
        native.remove_prefix(length == 0 ? 1 : length);
    }
    return path;
}

std::string NativeFromPath(std::u16string_view path) {
    std::string native;
    native.reserve(path.size());
    for (std::size_t i = 0; i < path.size(); ++i) {
        const char16_t unit = path[i];
        if (IsHighSurrogate(unit) && i + 1 < path.size() && IsLowSurrogate(path[i + 1])) {
            ++i;
            AppendUtf8(native, 0x10000 + ((unit & 0x3FFu) << 10) + (path[i] & 0x3FFu));
        } else if (unit >= kFirstEscape && unit <= kLastEscape) {
            native.push_back(static_cast<char>(unit - kFirstEscape + 0x80));
        } else if (IsHighSurrogate(unit) || IsLowSurrogate(unit)) {
            AppendUtf8(native, kReplacement); // no byte string has this form
        } else {
            AppendUtf8(native, unit);
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

std::uint64_t GetFileSize(std::u16string_view path) {
    struct stat status;
    const bool isFile = stat(NativeFromPath(path).c_str(), &status) == 0 && S_ISREG(status.st_mode);
    return isFile ? static_cast<std::uint64_t>(status.st_size) : 0;
}

} // namespace Corvid
