#pragma once

#include <span>

#include "Corvid/CommandLine/Command.h"

namespace Corvid {

// Every command of the program, in the order in which help lists them.
std::span<const CommandRow> GetCommands();

} // namespace Corvid
