#pragma once

#include <span>
#include <string>

#include "Corvid/CommandLine/Command.h"

namespace Corvid {

// What `corvid COMMAND --help` prints: what the command is for, how it is called, its options, examples.
std::string HelpOf(std::string_view name, const CommandDeclaration& declaration);

// What `corvid --help` prints.
std::string HelpOf(std::span<const CommandRow> commands);

} // namespace Corvid
