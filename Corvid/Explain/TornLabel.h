#pragma once

#include <cstddef>
#include <string_view>

namespace Corvid {

// Where the label and the blanks behind it end in the line, if it stands there from `start` on but for its blanks: some
// within it, none behind it, or such as editors and web pages have beside the space. 0: it does not.
std::size_t FindEndOfTornLabel(std::string_view line, std::size_t start, std::string_view label);

} // namespace Corvid
