#pragma once

#include <string>
#include <string_view>

namespace Corvid {

// Whether a label that nobody knows reads like one.
bool IsShownInPaths(std::string_view label);

// For a message: a label is shown whole, so that one letter more or less can be seen; what no label can be is cut.
std::string ExcerptOfLabel(std::string_view label);

} // namespace Corvid
