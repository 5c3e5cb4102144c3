#pragma once

#include "Corvid/Commands/CommonOptions.h"
#include "Engine/Archive/FileArchiveSystem.h"

namespace Corvid {

struct ImportOptions {
    std::vector<std::string> m_Paths; // one
    std::string m_Output;
    ArchiveFormat m_Format = ArchiveFormat::Binary;
    DiagnosticOptions m_Diagnostics;
    LookOptions m_Look;
};

// Makes a mesh of a glTF file.
void DeclareCommand(CommandDeclaration& declaration, ImportOptions& options);
int RunCommand(const ImportOptions& options, Console& console);

} // namespace Corvid
