#pragma once

#include <span>

#include "Recast/TextSink.h"

namespace Corvid {

inline constexpr int kExitSuccess = 0;
inline constexpr int kExitUsage = -1; // 255 to a POSIX shell

// One run of `recast type src dest [format]`. The first argument is the program's name; arguments are wide strings, and
// everything that the run has to say goes to `output`. The exit status tells of the command line alone: kExitUsage for
// too few arguments or an unknown type. Runs on different threads are independent of each other.
int RunProgram(std::span<const char16_t* const> arguments, TextSink& output);

} // namespace Corvid
