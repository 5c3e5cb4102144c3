#pragma once

#include <string>
#include <string_view>

#include "Corvid/Compare/Difference.h"

namespace Corvid {

// One object with the line's end: "file", "change", "field", and as they apply "from" and "to", or for a summary
// "count", "of", "largest" and where it is, "at". Numbers that JSON does not have are strings.
void AppendDifferenceJson(std::string& text, std::string_view file, const Difference& difference);

// A whole file that only one side has, or that has another path.
void AppendFileChangeJson(std::string& text, std::string_view file, Change change, std::string_view from = {});

} // namespace Corvid
