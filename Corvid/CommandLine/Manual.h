#pragma once

#include <span>
#include <string>

#include "Corvid/CommandLine/Command.h"

namespace Corvid {

// The manual page corvid(1), in mdoc.
std::string ManualOf(std::span<const CommandRow> commands);

} // namespace Corvid
