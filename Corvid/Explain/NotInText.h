#pragma once

#include <string>
#include <string_view>

namespace Corvid {

// Why text cannot hold the string, which has no escapes there; empty: it can.
std::string ExplainNotInText(std::u16string_view text);

} // namespace Corvid
