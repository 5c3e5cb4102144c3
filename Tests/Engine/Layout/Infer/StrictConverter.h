#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Engine/Layout/Layout.h"

namespace Corvid {

// Why the last conversion was refused, in a word or two.
const std::string& WhyRefused();

// Converts whole files by a layout in the plainest way there is, as strictly as layouts are used: everything is
// consumed, and a value that touches a mark is refused unless `isUnprovenAllowed`. Nothing: refused.
std::optional<std::string> ToBinary(const Layout& layout, std::string_view text, bool isUnprovenAllowed);
std::optional<std::string> ToText(const Layout& layout, std::string_view binary, bool isUnprovenAllowed);

} // namespace Corvid
