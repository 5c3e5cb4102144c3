#pragma once

#include <cstdint>

#include "Engine/Archive/Record.h"
#include "Engine/File/PathParts.h"
#include "Engine/Math/Color.h"
#include "Engine/Math/Matrix.h"
#include "Engine/String/FixedString.h"

namespace Corvid {

// File names of a mesh: UTF-16 units, terminator included.
inline constexpr int kMeshNameCapacity = 256;
using MeshName = FixedString<kMeshNameCapacity>;

class MeshMaterial final : public Record<MeshMaterial> {
public:
    static void Fields(auto& self, auto& fields) {
        fields.Value(u"DiffuseTextureFileName", self.m_DiffuseTextureFileName, AssetKind::Texture);
        fields.Value(u"SelfIlluminationTextureFileName", self.m_SelfIlluminationTextureFileName, AssetKind::Texture);
        fields.Value(u"NormalTextureFileName", self.m_NormalTextureFileName, AssetKind::Texture);
        fields.Value(u"DisplacementTextureFileName", self.m_DisplacementTextureFileName, AssetKind::Texture);
        fields.Value(u"TeamColorTextureFileName", self.m_TeamColorTextureFileName, AssetKind::Texture);
        fields.Value(u"Diffuse", self.m_Diffuse); // in front of ambient here, unlike in memory
        fields.Value(u"Ambient", self.m_Ambient);
        fields.Value(u"Specular", self.m_Specular);
        fields.Value(u"Emissive", self.m_Emissive);
        fields.Value(u"Glossiness", self.m_Glossiness);
        fields.AfterLoad(self, [](auto& material) { material.DeriveTeamLogo(); });
    }

    bool ShowsTeamLogo() const { return m_ShowsTeamLogo; }

    MeshName m_DiffuseTextureFileName;
    MeshName m_SelfIlluminationTextureFileName;
    MeshName m_NormalTextureFileName;
    MeshName m_DisplacementTextureFileName;
    MeshName m_TeamColorTextureFileName;
    Color m_Ambient;
    Color m_Diffuse;
    Color m_Specular;
    Color m_Emissive;
    float m_Glossiness = 0.0f;

private:
    // Set by the team-colour texture's file part; loading never clears it.
    void DeriveTeamLogo() {
        if (SplitPath(m_TeamColorTextureFileName.GetView()).m_Name == u"TeamLogo")
            m_ShowsTeamLogo = true;
    }

    bool m_ShowsTeamLogo = false;
};

// Indices into the vertex array and the material array; not checked against them.
class MeshTriangle final : public Record<MeshTriangle> {
public:
    static void Fields(auto& self, auto& fields) {
        fields.Value(u"iVertex0", self.m_iVertex0);
        fields.Value(u"iVertex1", self.m_iVertex1);
        fields.Value(u"iVertex2", self.m_iVertex2);
        fields.Value(u"iMaterial", self.m_iMaterial);
    }

    std::int32_t m_iVertex0 = 0;
    std::int32_t m_iVertex1 = 0;
    std::int32_t m_iVertex2 = 0;
    std::int32_t m_iMaterial = 0;
};

// A named place on the mesh to attach things to.
class MeshPoint final : public Record<MeshPoint> {
public:
    static void Fields(auto& self, auto& fields) {
        fields.Value(u"DataString", self.m_DataString);
        fields.Value(u"Position", self.m_Position);
        fields.Value(u"Orientation", self.m_Orientation);
    }

    MeshName m_DataString; // the point's name or tag, free text
    Vector3 m_Position{};
    Matrix33 m_Orientation; // all zero, not identity, until loaded
};

} // namespace Corvid
