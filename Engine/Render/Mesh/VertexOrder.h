#pragma once

#include <cstdint>
#include <span>

#include "Engine/DataStructures/DynamicArray.h"
#include "Engine/Render/Mesh/MeshVertex.h"

namespace Corvid {

// Sorts the vertices of a mesh by their distance from a plane, ascending; equal distances by index, NaN last.
class VertexOrder {
public:
    // The key of a vertex is | radius - coordinate |, with `axis` as the coordinate. Entries are valid until the next
    // call.
    std::span<const std::uint64_t> Sort(const DynamicArray<MeshVertex>& vertices, float radius, float Vector3::*axis);

    static std::int32_t IndexOf(std::uint64_t entry) { return static_cast<std::int32_t>(entry & 0xFFFFFFFF); }

private:
    std::span<const std::uint64_t> SortByRadix();

    // The key's bits above the index: non-negative floats order like their bits.
    DynamicArray<std::uint64_t> m_Entries;
    DynamicArray<std::uint64_t> m_Scratch;
};

} // namespace Corvid
