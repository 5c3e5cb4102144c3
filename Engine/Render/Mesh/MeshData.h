#pragma once

#include <array>
#include <cstdint>

#include "Engine/Archive/FileArchiveSystem.h"
#include "Engine/Archive/Record.h"
#include "Engine/DataStructures/DynamicArray.h"
#include "Engine/Math/Matrix.h"
#include "Engine/Render/Mesh/CachedVertexIndices.h"
#include "Engine/Render/Mesh/MeshParts.h"
#include "Engine/Render/Mesh/MeshVertex.h"

namespace Corvid {

// The counts of the cached lists, by direction number.
inline constexpr std::array<Label, kDirectionCount> kCachedIndexCountLabels = {
    u"NumCachedVertexIndicesInDirection:UP",    u"NumCachedVertexIndicesInDirection:DOWN",
    u"NumCachedVertexIndicesInDirection:LEFT",  u"NumCachedVertexIndicesInDirection:RIGHT",
    u"NumCachedVertexIndicesInDirection:FRONT", u"NumCachedVertexIndicesInDirection:BACK",
};

// The contents of a mesh file. Loading takes everything as stored; saving recomputes the cached vertex lists, so that a
// saved file always carries fresh ones.
class MeshData final : public Record<MeshData>, public FileObject {
public:
    using VertexIndexVector = Corvid::VertexIndexVector;

    MeshData();

    static void Fields(auto& self, auto& fields) {
        fields.Value(u"maxDiffuseMipLevel", self.m_MaxDiffuseMipLevel);
        fields.Value(u"hasValidTangents", self.m_HasValidTangents);
        fields.Value(u"BoundingRadius", self.m_BoundingRadius);
        fields.Value(u"MaxBoundingExtents", self.m_MaxBoundingExtents);
        fields.Value(u"MinBoundingExtents", self.m_MinBoundingExtents);
        fields.AfterLoad(self, [](auto& data) { data.DeriveBox(); });
        fields.List(u"NumMaterials", u"Material", self.m_Materials);
        fields.List(u"NumPoints", u"Point", self.m_Points);
        fields.List(u"NumVertices", u"Vertex", self.m_Vertices);
        fields.List(u"NumTriangles", u"Triangle", self.m_Triangles);
        fields.Refresh(self, [](auto& data) { data.UpdateCachedVertexIndices(); });
        for (int direction = 0; direction < kDirectionCount; ++direction)
            fields.List(kCachedIndexCountLabels[static_cast<std::size_t>(direction)], u"Index",
                        self.m_CachedVertexIndices[direction]);
    }

    // Loads the file at `path`, opened whole however long it is.
    LoadResult LoadFromFile(FileArchiveSystem& archives, std::u16string_view path);
    SaveResult SaveToFile(FileArchiveSystem& archives, ArchiveFormat format, std::u16string_view path) const;

    void UpdateCachedVertexIndices() const;
    const CachedVertexIndices& GetCachedVertexIndices() const { return m_CachedVertexIndices; }

    std::uint32_t m_IsLoaded = 0; // 1 from the begin of a load from a file
    std::uint32_t m_Checksum = 0; // of the values read by the last load from a file
    MeshName m_FileName;          // that the mesh was loaded from
    std::int32_t m_MaxDiffuseMipLevel = 0;
    bool m_HasValidTangents = false;
    DynamicArray<MeshVertex> m_Vertices;
    DynamicArray<MeshMaterial> m_Materials;
    DynamicArray<MeshTriangle> m_Triangles;
    DynamicArray<MeshPoint> m_Points;
    float m_BoundingRadius = -1.0f;
    Vector3 m_MaxBoundingExtents; // -FLT_MAX until loaded
    Vector3 m_MinBoundingExtents; // FLT_MAX until loaded
    Vector3 m_BoxSize{};          // the box is derived from the extents by loading
    Vector3 m_BoxCentre{};
    Vector3 m_BoxHalfExtents{};
    Matrix33 m_BoxOrientation;
    MeshPoint m_RootPoint; // at the origin, not turned; not archived

private:
    void DeriveBox();

    mutable CachedVertexIndices m_CachedVertexIndices;
};

} // namespace Corvid
