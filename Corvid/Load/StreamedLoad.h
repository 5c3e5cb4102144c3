#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "Corvid/Load/LoadedFile.h"

namespace Corvid {

// From this size on, a file is tried as a stream first: touching that much memory costs as much as reading the file.
inline constexpr std::uint64_t kLeastStreamedSize = 256 * 1024; // bytes

// Loads a file of which nothing is to be told, without ever holding its bytes. Nothing: it is not that sound, or not of
// a kind that is known beforehand; LoadFromBytes() tells what it is, from the file's bytes as they are then.
std::optional<LoadedFile> LoadStreamed(std::u16string_view path, const LoadOptions& options);

} // namespace Corvid
