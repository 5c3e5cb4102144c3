#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "Corvid/CommandLine/CommandDeclaration.h"

namespace Corvid {

struct ParseResult {
    bool m_IsHelpWanted = false;
    bool m_IsVersionWanted = false;
    std::string m_Error; // empty: all values have been taken
};

// Takes the arguments behind a command's name as its declaration says. The one place that knows the library behind it.
ParseResult ParseArguments(const CommandDeclaration& declaration, std::vector<std::string> arguments);

} // namespace Corvid
