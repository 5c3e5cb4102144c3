#include "Engine/Render/Mesh/CachedVertexIndices.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <span>

#include "Engine/Render/Mesh/VertexOrder.h"

namespace Corvid {

namespace {

using DirectionMask = std::uint8_t; // bit d: faces direction d

constexpr DirectionMask MaskOf(Direction direction) {
    return static_cast<DirectionMask>(1u << static_cast<int>(direction));
}

// Directions that share the sort key.
constexpr DirectionMask kSortedByZ =
    MaskOf(Direction::Up) | MaskOf(Direction::Down) | MaskOf(Direction::Left) | MaskOf(Direction::Right);
constexpr DirectionMask kSortedByX = MaskOf(Direction::Front) | MaskOf(Direction::Back);

// The dot product with an axis is one component of the normal, give or take a sign. A normal with an infinite or NaN
// component faces nothing.
DirectionMask FacedDirections(const Vector3& normal) {
    if (!std::isfinite(normal.x) || !std::isfinite(normal.y) || !std::isfinite(normal.z))
        return 0;
    const auto bit = [](bool isFacing, Direction direction) { return isFacing ? MaskOf(direction) : 0; };
    return static_cast<DirectionMask>(
        bit(normal.y >= kFacingCosine, Direction::Up) | bit(-normal.y >= kFacingCosine, Direction::Down) |
        bit(-normal.x >= kFacingCosine, Direction::Left) | bit(normal.x >= kFacingCosine, Direction::Right) |
        bit(normal.z >= kFacingCosine, Direction::Front) | bit(-normal.z >= kFacingCosine, Direction::Back));
}

// Sorts once for all directions of `directions` and thins on the way: an entry that would be removed is never added.
class ListBuilder {
public:
    ListBuilder(const DynamicArray<MeshVertex>& vertices, const DynamicArray<DirectionMask>& faced, float radius,
                CachedVertexIndices& lists)
        : m_Vertices(vertices.begin()), m_Faced(faced.begin()), m_Tolerance(radius * 0.01f), m_Lists(lists) {}

    void Build(std::span<const std::uint64_t> order, DirectionMask directions) {
        for (std::size_t i = 0; i < order.size(); ++i) {
            // The order jumps about in memory: large meshes would wait for every vertex.
            constexpr std::size_t kDistance = 16;
            if (i + kDistance < order.size())
                __builtin_prefetch(&m_Vertices[VertexOrder::IndexOf(order[i + kDistance])].m_Position);
            const std::int32_t index = VertexOrder::IndexOf(order[i]);
            unsigned faced = m_Faced[index] & directions;
            for (; faced != 0; faced &= faced - 1)
                Offer(std::countr_zero(faced), index);
        }
    }

private:
    void Offer(int direction, std::int32_t index) {
        std::int32_t& previous = m_Previous[direction];
        if (index != previous) {
            if (Distance(m_Vertices[previous].m_Position, m_Vertices[index].m_Position) < m_Tolerance)
                return;
            previous = index;
        }
        m_Lists[direction].Append() = index;
    }

    const MeshVertex* m_Vertices;
    const DirectionMask* m_Faced;
    float m_Tolerance;
    CachedVertexIndices& m_Lists;
    std::int32_t m_Previous[kDirectionCount] = {}; // vertex 0, whether or not it faces the direction
};

} // namespace

void ComputeCachedVertexIndices(const DynamicArray<MeshVertex>& vertices, float boundingRadius,
                                CachedVertexIndices& lists) {
    const int count = vertices.GetSize();
    for (VertexIndexVector& list : lists)
        list.SetCapacity(count);
    DynamicArray<DirectionMask> faced;
    faced.SetSize(count);
    DirectionMask* mask = faced.begin();
    for (const MeshVertex& vertex : vertices)
        *mask++ = FacedDirections(vertex.m_Normal);

    ListBuilder builder(vertices, faced, boundingRadius, lists);
    VertexOrder order;
    const auto build = [&](float Vector3::*axis, DirectionMask directions) {
        builder.Build(order.Sort(vertices, boundingRadius, axis), directions);
    };
    build(&Vector3::z, kSortedByZ);
    build(&Vector3::x, kSortedByX);
}

} // namespace Corvid
