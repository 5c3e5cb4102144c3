#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "Engine/Render/Mesh/MeshParts.h"
#include "Engine/Render/Mesh/MeshVertex.h"

namespace Corvid {

// What both directions call the record's own values in the notes of the node that stands for the mesh.
namespace GltfRecord {
inline constexpr const char* kMaxDiffuseMipLevel = "maxDiffuseMipLevel";
inline constexpr const char* kHasValidTangents = "hasValidTangents";
inline constexpr const char* kBoundingRadius = "BoundingRadius";
inline constexpr const char* kMaxBoundingExtents = "MaxBoundingExtents";
inline constexpr const char* kMinBoundingExtents = "MinBoundingExtents";
inline constexpr const char* kOtherTriangles = "OtherTriangles"; // place, three vertices, material; and so on
inline constexpr const char* kShape = "Shape";                   // see ShapeOf

// In the notes of a primitive.
inline constexpr const char* kMaterial = "iMaterial";        // one that the record does not have
inline constexpr const char* kOnlyVertices = "OnlyVertices"; // no triangles: the primitive shows its vertices as dots
} // namespace GltfRecord

// A hash of the positions and the triangles that glTF can have. The stored bounds, and triangles that glTF cannot have,
// belong to a shape: a mesh of another one gets its own.
std::string ShapeOf(std::span<const MeshVertex> vertices, std::span<const MeshTriangle> triangles);

} // namespace Corvid
