#pragma once

#include <string>
#include <vector>

#include "Corvid/CommandLine/Command.h"
#include "Corvid/Commands/CommonOptions.h"
#include "Corvid/Commands/LayoutOptions.h"

namespace Corvid {

struct LayoutShowOptions {
    LayoutOptions m_Layouts;
    LookOptions m_Look;               // there is nothing to colour; scripts give these to all commands
    std::vector<std::string> m_Types; // one, or none
};

// Prints the layout that is in force for an entity type, or a table of all types.
void DeclareCommand(CommandDeclaration& declaration, LayoutShowOptions& options);
int RunCommand(const LayoutShowOptions& options, Console& console);

} // namespace Corvid
