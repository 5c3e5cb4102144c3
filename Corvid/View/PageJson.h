#pragma once

#include <string>
#include <string_view>

namespace Corvid {

// JSON that may stand in a script element: whatever it holds, there is no '<' in it that could end the element or begin
// a comment. In JSON a '<' stands in strings only.
std::string WithoutMarkup(std::string_view json);

// A string of such JSON; ill-formed UTF-8 becomes U+FFFD.
std::string PageString(std::string_view text);

} // namespace Corvid
