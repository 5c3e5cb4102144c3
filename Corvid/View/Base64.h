#pragma once

#include <string>
#include <string_view>

namespace Corvid {

// With padding, in one line.
std::string ToBase64(std::string_view bytes);

// `digits` is a whole number of bytes, two hexadecimal digits each.
std::string BytesOfHex(std::string_view digits);

} // namespace Corvid
