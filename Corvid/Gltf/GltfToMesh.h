#pragma once

#include <string>
#include <vector>

#include "Corvid/Gltf/GltfDocument.h"
#include "Engine/Render/Mesh/MeshData.h"

namespace Corvid {

// Makes a mesh of all that the shown scene holds, in the engine's coordinates. What the file does not say is computed:
// flat normals, tangents, extents, the radius about the origin, a plain material. Empty nodes become points: those that
// hold neither a mesh nor any other object, and have none below them.
//
// Of a file that MakeGltf made, the record comes back as it was; where another tool changed something, its change
// counts.
//
// `warnings` says what the mesh has no place for. False, with a clause that says what is wrong, when the file
// contradicts itself, or describes more than 4 vertices or triangles for each of its bytes (and a million).
bool TakeGltf(const GltfDocument& document, MeshData& mesh, std::vector<std::string>& warnings, std::string& error);

} // namespace Corvid
