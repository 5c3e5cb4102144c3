#pragma once

#include <span>
#include <string>

#include "Corvid/CommandLine/Command.h"

namespace Corvid {

// What a shell reads to complete command lines of the program.
std::string BashCompletionsOf(std::span<const CommandRow> commands);
std::string ZshCompletionsOf(std::span<const CommandRow> commands);
std::string FishCompletionsOf(std::span<const CommandRow> commands);

} // namespace Corvid
