#include "Engine/Render/Mesh/MeshData.h"

#include <limits>
#include <string>

namespace Corvid {

MeshData::MeshData() {
    constexpr float kLargest = std::numeric_limits<float>::max();
    m_MaxBoundingExtents = {-kLargest, -kLargest, -kLargest};
    m_MinBoundingExtents = {kLargest, kLargest, kLargest};
    m_RootPoint.m_Orientation = Matrix33::Identity();
}

void MeshData::DeriveBox() {
    m_BoxSize = m_MaxBoundingExtents - m_MinBoundingExtents;
    m_BoxCentre = (m_MaxBoundingExtents + m_MinBoundingExtents) * 0.5f;
    m_BoxHalfExtents = (m_MaxBoundingExtents - m_MinBoundingExtents) * 0.5f;
}

void MeshData::UpdateCachedVertexIndices() const {
    ComputeCachedVertexIndices(m_Vertices, m_BoundingRadius, m_CachedVertexIndices);
}

LoadResult MeshData::LoadFromFile(FileArchiveSystem& archives, std::u16string_view path) {
    m_IsLoaded = 1;
    if (path.data() != m_FileName.GetText())
        m_FileName = path;
    return archives.Load(path, *this, [this](FileArchive& archive) {
        archive.ReadLabeledObject(u"MeshData", *this);
        m_Checksum = archive.GetChecksum();
        return true;
    });
}

SaveResult MeshData::SaveToFile(FileArchiveSystem& archives, ArchiveFormat format, std::u16string_view path) const {
    return archives.Save(path, format, *this,
                         [this](FileArchive& archive) { archive.WriteLabeledObject(u"MeshData", *this); });
}

} // namespace Corvid
