#include "Corvid/Info/FileInfo.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string_view>
#include <unordered_set>

#include "Corvid/Values/ValueTreeWriter.h"

namespace Corvid {

namespace {

void AddCounts(FileInfo& info, const ValueTree& values, ValueIndex begin, ValueIndex end) {
    for (ValueIndex i = begin; i < end; i = values[i].m_End) {
        if (values[i].m_Kind == ValueKind::List)
            info.m_Counts.emplace_back(values.GetLabel(values[i]), values.GetInt(values[i]));
        else if (values[i].m_Kind == ValueKind::Record)
            AddCounts(info, values, i + 1, values[i].m_End);
    }
}

MeshBounds BoundsOf(const MeshData& mesh) {
    MeshBounds bounds{mesh.m_BoundingRadius, mesh.m_MinBoundingExtents, mesh.m_MaxBoundingExtents, {}};
    if (mesh.m_Vertices.GetSize() == 0)
        return bounds;
    constexpr float kFar = std::numeric_limits<float>::infinity();
    MeshBounds::Actual actual{0.0f, {kFar, kFar, kFar}, {-kFar, -kFar, -kFar}};
    double squaredRadius = 0;
    for (const MeshVertex& vertex : mesh.m_Vertices) {
        double squared = 0;
        for (float Vector3::*const axis : {&Vector3::x, &Vector3::y, &Vector3::z}) {
            const float coordinate = vertex.m_Position.*axis;
            if (std::isnan(coordinate))
                continue;
            actual.m_Min.*axis = std::min(actual.m_Min.*axis, coordinate);
            actual.m_Max.*axis = std::max(actual.m_Max.*axis, coordinate);
            squared += static_cast<double>(coordinate) * coordinate;
        }
        squaredRadius = std::max(squaredRadius, squared);
    }
    actual.m_Radius = static_cast<float>(std::sqrt(squaredRadius));
    bounds.m_Actual = actual;
    return bounds;
}

std::vector<std::int32_t> UnusedMaterialsOf(const MeshData& mesh) {
    std::vector<bool> isUsed(static_cast<std::size_t>(mesh.m_Materials.GetSize()), false);
    for (const MeshTriangle& triangle : mesh.m_Triangles) {
        if (triangle.m_iMaterial >= 0 && triangle.m_iMaterial < mesh.m_Materials.GetSize())
            isUsed[static_cast<std::size_t>(triangle.m_iMaterial)] = true;
    }
    std::vector<std::int32_t> unused;
    for (std::size_t i = 0; i < isUsed.size(); ++i) {
        if (!isUsed[i])
            unused.push_back(static_cast<std::int32_t>(i));
    }
    return unused;
}

std::uint64_t CountRepeatedVertices(const MeshData& mesh) {
    static_assert(sizeof(MeshVertex) == 13 * sizeof(float)); // no padding: the bytes are the values
    std::unordered_set<std::string_view> seen;
    seen.reserve(static_cast<std::size_t>(mesh.m_Vertices.GetSize()));
    for (const MeshVertex& vertex : mesh.m_Vertices)
        seen.insert({reinterpret_cast<const char*>(&vertex), sizeof vertex});
    return static_cast<std::uint64_t>(mesh.m_Vertices.GetSize()) - seen.size();
}

} // namespace

FileInfo DescribeFile(const LoadedFile& file) {
    FileInfo info;
    info.m_Kind = file.m_Kind;
    info.m_Encoding = file.m_Encoding;
    info.m_Bytes = file.m_Size;
    info.m_EntityType = file.m_EntityType;
    info.m_Layout = file.m_LayoutOrigin;
    const KindObject* const object = file.GetBest();
    if (object == nullptr)
        return info;
    const ValueTree values = StoredValuesOf(*object);
    AddCounts(info, values, 0, values.GetSize());
    info.m_References = FindReferences(*object, values);
    if (object->GetKind() == Kind::Mesh) {
        const MeshData& mesh = static_cast<const MeshObject&>(*object).m_Data;
        info.m_Mesh = {BoundsOf(mesh), UnusedMaterialsOf(mesh), CountRepeatedVertices(mesh)};
    }
    return info;
}

} // namespace Corvid
