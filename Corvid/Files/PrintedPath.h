#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace Corvid {

// A path for a line of text: in quotes, with escapes, where control characters, quotes or backslashes need them.
std::string PrintedPath(std::string_view path);

// FNV-1a with 64 bits, which deals files to shards.
std::uint64_t HashOfPath(std::string_view path);

} // namespace Corvid
