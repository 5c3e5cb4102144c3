#pragma once

#include "Corvid/Commands/Diff.h"

namespace Corvid {

// Whether the operands are those that git calls an external diff with: path, then old file, its hash and mode, new
// file, its hash and mode, then of a renamed file its new path and what git says of it; the path alone of an unmerged
// one.
bool IsCalledByGit(const std::vector<std::string>& operands);

// Names the path in the repository; the status is 0 whatever differs, since git stops at any other.
int DiffForGit(const DiffOptions& options, Console& console);

} // namespace Corvid
