#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "Corvid/Diagnostics/Diagnostic.h"
#include "Corvid/Load/LoadedFile.h"

namespace Corvid {

// One file as the page shows it.
struct ViewEntry {
    std::string m_Path; // as printed
    std::string m_Kind; // its word, or empty
    std::string m_Encoding;
    std::string m_EntityType;
    std::uint64_t m_Size = 0; // bytes of the file
    std::vector<Diagnostic> m_Diagnostics;
    std::uint64_t m_LeftOutCount = 0; // diagnostics beyond those

    std::string m_Values;      // JSON; empty: nothing could be read
    std::string m_Model;       // of a mesh, as GLB
    std::string m_VertexLists; // of a mesh, as stored: a JSON array for each direction
};

} // namespace Corvid
