#pragma once

#include <optional>
#include <string>

#include "Corvid/Commands/CommonOptions.h"

namespace Corvid {

struct LayoutInferOptions {
    FileSelection m_Samples;
    std::string m_Folder;               // where the layouts go
    std::optional<std::string> m_Known; // a layout to continue
    LookOptions m_Look;
};

void DeclareCommand(CommandDeclaration& declaration, LayoutInferOptions& options);
int RunCommand(const LayoutInferOptions& options, Console& console);

} // namespace Corvid
