#include "Corvid/Gltf/GltfRecord.h"

#include <bit>
#include <charconv>
#include <cmath>

namespace Corvid {

namespace {

// FNV-1a, a word at a time.
class Hash {
public:
    void Add(std::uint32_t word) { m_Value = (m_Value ^ word) * 0x100000001B3; }
    // What is not finite stands as zero in glTF; zeros are one, since some tools drop their sign.
    void Add(float value) { Add(value == 0.0f || !std::isfinite(value) ? 0u : std::bit_cast<std::uint32_t>(value)); }
    std::uint64_t GetValue() const { return m_Value; }

private:
    std::uint64_t m_Value = 0xCBF29CE484222325;
};

} // namespace

std::string ShapeOf(std::span<const MeshVertex> vertices, std::span<const MeshTriangle> triangles) {
    Hash hash;
    for (const MeshVertex& vertex : vertices) {
        hash.Add(vertex.m_Position.x);
        hash.Add(vertex.m_Position.y);
        hash.Add(vertex.m_Position.z);
    }
    for (const MeshTriangle& triangle : triangles) {
        for (const std::int32_t index : {triangle.m_iVertex0, triangle.m_iVertex1, triangle.m_iVertex2})
            hash.Add(static_cast<std::uint32_t>(index));
    }
    char digits[16];
    const auto [end, failure] = std::to_chars(digits, digits + sizeof digits, hash.GetValue(), 16);
    return std::string(digits, end);
}

} // namespace Corvid
