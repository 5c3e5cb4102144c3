#pragma once

#include "Corvid/Gltf/GltfDocument.h"
#include "Corvid/Gltf/GltfTransform.h"
#include "Engine/Render/Mesh/MeshParts.h"

namespace Corvid {

// A point is a node without a mesh. Its axes (the rows of the orientation) are a rotation where they can be one; what a
// node cannot say of the point travels in the notes, and counts while the node still stands where it was put.

GltfNode MakeGltfPoint(const MeshPoint& point);

// `world` is where the node stands. False when the name was too long, and cut.
bool TakeGltfPoint(const GltfNode& node, const GltfTransform& world, MeshPoint& point);

} // namespace Corvid
