#pragma once

#include <string>
#include <vector>

#include "Corvid/Terminal/Console.h"

namespace Corvid {

// One run of `corvid`: the arguments behind the program's name, in UTF-8 or in whatever bytes paths are made of.
// Returns the exit status.
int RunCorvid(std::vector<std::string> arguments, Console& console);

} // namespace Corvid
