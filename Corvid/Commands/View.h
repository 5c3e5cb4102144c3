#pragma once

#include <cstdint>
#include <string>

#include "Corvid/Commands/CommonOptions.h"
#include "Corvid/Commands/LayoutOptions.h"

namespace Corvid {

struct ViewOptions {
    BatchOptions m_Batch;
    std::string m_Page; // the destination
    std::optional<Kind> m_Kind;
    LayoutOptions m_Layouts;
    DiagnosticOptions m_Diagnostics;
    std::uint64_t m_MaxSize = std::uint64_t{200} << 20; // bytes of the page
    LookOptions m_Look;
};

// Writes one page on which people look at many files.
void DeclareCommand(CommandDeclaration& declaration, ViewOptions& options);
int RunCommand(const ViewOptions& options, Console& console);

// Bytes, or with K or M behind the number 1,024 and 1,048,576 of them; nothing for anything else, and for 0.
std::optional<std::uint64_t> SizeFromText(const std::string& text);

} // namespace Corvid
