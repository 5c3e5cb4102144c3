#pragma once

#include <array>
#include <bit>
#include <cstdint>

#include "Engine/Render/Mesh/MeshVertex.h"

namespace Corvid {

// A vertex in glTF: what the standard attributes can hold stands there, and where that differs from the vertex, the
// float's own bits stand beside it in an attribute of our own, as two 16-bit halves, the lower one first. Reading takes
// those bits only while the standard values are still what stands for them: what an artist changed is not undone.

using VertexBits = std::array<std::uint32_t, 13>; // in the order of MeshVertex

inline constexpr std::array<const char*, 13> kOwnAttributes = {
    "_POSITION_X", "_POSITION_Y", "_POSITION_Z", "_NORMAL_X", "_NORMAL_Y", "_NORMAL_Z", "_TANGENT_X",
    "_TANGENT_Y",  "_TANGENT_Z",  "_U0",         "_V0",       "_U1",       "_V1",
};

inline VertexBits BitsOf(const MeshVertex& vertex) {
    return std::bit_cast<VertexBits>(vertex);
}

// In the engine's coordinates: finite numbers, normals and tangents of length one; tangents are zero without them.
MeshVertex PlainVertex(const MeshVertex& vertex, bool hasTangents);

// `vector` or, where its length is not one, what has its direction and is; `fallback` where it has none.
Vector3 UnitOr(const Vector3& vector, const Vector3& fallback);

} // namespace Corvid
