#pragma once

#include "Corvid/Diagnostics/DiagnosticLog.h"
#include "Engine/Render/Mesh/MeshData.h"

namespace Corvid {

// Warns of indices that lead nowhere, triangles that repeat a vertex, vertices outside the stored bounds, stored vertex
// lists that are not the computed ones, and numbers that are not finite.
void CheckMeshContent(const MeshData& mesh, DiagnosticLog& log);

} // namespace Corvid
