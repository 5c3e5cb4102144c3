#pragma once

#include <string>
#include <string_view>

namespace Corvid {

// The form in which the system takes a path of any length: as it is where that is short enough, else whole and marked
// as long.
std::wstring SystemPath(std::wstring_view path);
std::wstring SystemPath(std::u16string_view path);

} // namespace Corvid
