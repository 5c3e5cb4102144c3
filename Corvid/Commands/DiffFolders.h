#pragma once

#include <string>

#include "Corvid/Commands/Diff.h"

namespace Corvid {

// Compares the files of two folders, paired by their paths below them; returns the status.
int DiffTwoFolders(const std::string& before, const std::string& after, const DiffOptions& options, Console& console);

} // namespace Corvid
