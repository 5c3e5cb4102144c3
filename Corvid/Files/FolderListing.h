#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Corvid/Files/FolderEntries.h"

namespace Corvid {

// The entries but for "." and "..", in no order; nothing when the folder cannot be read, and LastSystemError() says
// why.
std::optional<std::vector<FolderEntry>> ListFolder(const std::string& path);

// The same with the statuses of the entries that `wants` picks. While a large folder is still being read, other threads
// ask for these, so that there are up to `jobs` at work.
std::optional<std::vector<FolderEntry>> ListFolder(const std::string& path, bool (*wants)(const FolderEntry&),
                                                   int jobs);

} // namespace Corvid
