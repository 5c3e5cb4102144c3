#pragma once

#include <string>
#include <vector>

#include "Corvid/CommandLine/Command.h"
#include "Corvid/Commands/LayoutOptions.h"

namespace Corvid {

struct LayoutShowOptions {
    LayoutOptions m_Layouts;
    std::vector<std::string> m_Types; // one, or none
};

// Prints the layout that is in force for an entity type, or a table of all types.
void DeclareCommand(CommandDeclaration& declaration, LayoutShowOptions& options);
int RunCommand(const LayoutShowOptions& options, Console& console);

} // namespace Corvid
