#pragma once

#include "Corvid/Commands/CommonOptions.h"
#include "Corvid/Commands/LayoutOptions.h"
#include "Corvid/Load/LoadedFile.h"

namespace Corvid {

struct ConvertOptions {
    BatchOptions m_Batch;
    std::optional<Kind> m_Kind;
    LayoutOptions m_Layouts;
    ArchiveFormat m_Format = ArchiveFormat::Text;
    std::optional<std::string> m_Output;
    bool m_IsInPlace = false;
    bool m_IsCheck = false;  // only tell what would change
    bool m_IsDryRun = false; // only tell what would be done
    bool m_IsUpdate = false;
    bool m_IsVerified = false;
    bool m_IsLossAllowed = false;
    FloatPrecision m_Floats = FloatPrecision::Exact;
    DiagnosticOptions m_Diagnostics;
    LookOptions m_Look;
};

// Writes files in the other encoding, or anew in their own.
void DeclareCommand(CommandDeclaration& declaration, ConvertOptions& options);
int RunCommand(const ConvertOptions& options, Console& console);

} // namespace Corvid
