#pragma once

#include <string>
#include <string_view>

namespace Corvid {

// Text as XML shows it, whatever it holds: markup and line ends are escaped, what XML forbids becomes U+FFFD.
std::string SvgText(std::u16string_view text);

} // namespace Corvid
