#pragma once

#include <cstdint>

#include "Engine/Render/Mesh/MeshData.h"

namespace Corvid {

// What a caller asks of a mesh when it loads one.
struct MeshLoadParameters {
    bool m_Flags[2] = {false, false};             // the caller's own: kept with the mesh, nothing here reads them
    std::int32_t m_Identifiers[3] = {-1, -1, -1}; // likewise; -1 is none
};

// A mesh as the mesh system hands it out.
class Mesh {
public:
    using Data = MeshData;
    using Material = MeshMaterial;
    using Triangle = MeshTriangle;
    using Point = MeshPoint;
    using Vertex = MeshVertex;
    using ArchivableVertex = ArchivableMeshVertex;

    explicit Mesh(const MeshLoadParameters& parameters);

    MeshLoadParameters m_LoadParameters;
    Data m_Data;
    std::int32_t m_ReferenceCount = 0;
    bool m_IsStandalone = false; // belongs to its user, not to the mesh system
};

} // namespace Corvid
