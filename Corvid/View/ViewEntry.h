#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "Corvid/Diagnostics/DiagnosticLimits.h"
#include "Corvid/Load/LoadedFile.h"

namespace Corvid {

// One file as the page shows it.
struct ViewEntry {
    std::string m_Path;     // in the bytes that the system has for it
    std::string m_Kind;     // its word; empty: unknown
    std::string m_Encoding; // "text", "binary" or empty
    std::string m_EntityType;
    std::uint64_t m_Size = 0; // bytes of the file
    std::uint64_t m_ErrorCount = 0;
    std::uint64_t m_WarningCount = 0;
    std::vector<ShownDiagnostic> m_Diagnostics;

    std::string m_Values;      // JSON, of a mesh without vertices and triangles; empty: nothing could be read
    std::string m_Model;       // of a mesh, as GLB
    std::string m_VertexLists; // of a mesh, as stored: a JSON array for each direction
};

// What is shown of the best that loading gave; the object is used up. `log` holds what the page tells about the file.
// `modelError` says why there is no model of a mesh.
ViewEntry MakeViewEntry(std::string_view path, LoadedFile& loaded, const DiagnosticLog& log, std::string& modelError);

void AddDiagnostics(ViewEntry& entry, const DiagnosticLog& log);

} // namespace Corvid
