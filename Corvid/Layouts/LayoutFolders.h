#pragma once

#include <optional>
#include <string>
#include <vector>

namespace Corvid {

// Where layouts are looked for, in this order: the folder that was given, the one that the environment variable
// CORVID_LAYOUTS names, and the one that was installed with the program.
std::vector<std::u16string> GetLayoutFolders(const std::optional<std::string>& given);

} // namespace Corvid
