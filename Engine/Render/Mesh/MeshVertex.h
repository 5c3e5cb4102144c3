#pragma once

#include "Engine/Archive/Record.h"
#include "Engine/Math/Vector.h"

namespace Corvid {

// Thirteen bare floats, so that vertex arrays are contiguous and cost nothing but themselves.
struct MeshVertex {
    Vector3 m_Position; // model space: +X right, +Y up, +Z front
    Vector3 m_Normal;
    Vector3 m_Tangent;
    float m_U0, m_V0; // texture coordinates
    float m_U1, m_V1;
};

// Carries one vertex through an archive.
class ArchivableMeshVertex final : public MeshVertex, public Record<ArchivableMeshVertex> {
public:
    ArchivableMeshVertex() : MeshVertex{} {}
    explicit ArchivableMeshVertex(const MeshVertex& vertex) : MeshVertex(vertex) {}

    static void Fields(auto& self, auto& fields) {
        fields.Value(u"Position", self.m_Position);
        fields.Value(u"Normal", self.m_Normal);
        fields.Value(u"Tangent", self.m_Tangent);
        fields.Reserved(u"Color", Color{});
        fields.Value(u"U0", self.m_U0);
        fields.Value(u"V0", self.m_V0);
        fields.Value(u"U1", self.m_U1);
        fields.Value(u"V1", self.m_V1);
    }
};

// A vertex that is missing from the archive is all zero.
inline void ReadValue(Archive& archive, Label label, MeshVertex& value) {
    ArchivableMeshVertex vertex;
    archive.ReadLabeledObject(label, vertex);
    value = vertex;
}
inline void WriteValue(Archive& archive, Label label, const MeshVertex& value) {
    archive.WriteLabeledObject(label, ArchivableMeshVertex(value));
}

} // namespace Corvid
