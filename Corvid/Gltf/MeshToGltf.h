#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Corvid/Gltf/GltfDocument.h"
#include "Engine/Render/Mesh/MeshData.h"

namespace Corvid {

// The bytes of a PNG or JPEG that shows the texture of that name; nothing when there is none.
using TextureReader = std::function<std::optional<std::string>(std::u16string_view textureName)>;

// A document that shows the mesh in every tool, and out of which TakeGltf makes the same record again, bit for bit but
// for the derived vertex lists:
// - one node holds the mesh and the record's own values (in its notes), and a node below it stands for each point;
// - all primitives share the vertices; there is one for each run of triangles of one material;
// - triangles whose vertices do not exist are in the notes, with their places in the list;
// - what the standard attributes cannot hold stands in attributes of our own (GltfVertex.h).
GltfDocument MakeGltf(const MeshData& mesh, std::u16string_view name, const TextureReader& readTexture);

} // namespace Corvid
