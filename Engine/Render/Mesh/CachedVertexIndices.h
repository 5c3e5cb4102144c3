#pragma once

#include <cstdint>

#include "Engine/DataStructures/DynamicArray.h"
#include "Engine/DataStructures/DynamicVector.h"
#include "Engine/DataStructures/FixedArray.h"
#include "Engine/Math/Direction.h"
#include "Engine/Render/Mesh/MeshVertex.h"

namespace Corvid {

using VertexIndexVector = DynamicVector<std::int32_t>;

// One list for each direction: the vertices that face it.
using CachedVertexIndices = FixedArray<VertexIndexVector, kDirectionCount>;

// A normal faces a direction when the angle between them is at most 3 pi / 8 (67.5 degrees) as a single-precision
// value: the cosine, one component of the normal, is at least this. It is the smallest float whose arc cosine rounds to
// no more than the float nearest 3 pi / 8 (0x3F96CBE4): 0x3EC3EF14.
inline constexpr float kFacingCosine = 0x1.87de28p-2f;

// Computes the lists anew. For each direction the facing vertices are sorted by their distance from `boundingRadius`
// along z (up, down, left, right) or x (front, back), equal ones by index, NaN last; then those within 1 % of the
// radius of the vertex kept before are thinned out, where vertex 0 counts as kept before the first.
//
// Takes time linear in the number of vertices.
void ComputeCachedVertexIndices(const DynamicArray<MeshVertex>& vertices, float boundingRadius,
                                CachedVertexIndices& lists);

} // namespace Corvid
