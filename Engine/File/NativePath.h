#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace Corvid {

// Paths are UTF-16 throughout the engine. A byte of a path that is not UTF-8 (elsewhere than on Windows) is held as
// the lone low surrogate U+DC80 + (byte - 0x80), so that every path opens by its original bytes and still has a
// readable form.
#ifdef _WIN32
using NativeString = std::wstring;
#else
using NativeString = std::string;
#endif

std::u16string PathFromNative(std::basic_string_view<NativeString::value_type> native);
NativeString NativeFromPath(std::u16string_view path);

enum class PathKind { Missing, File, Folder }; // a device or FIFO is a File

PathKind GetPathKind(std::u16string_view path);

// Whether both paths lead to one file that is there, however they are spelled.
bool IsSameFile(std::u16string_view path, std::u16string_view other);

// In bytes; 0 for what is no ordinary file. Opens nothing.
std::uint64_t GetFileSize(std::u16string_view path);

} // namespace Corvid
