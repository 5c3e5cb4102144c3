#include "Corvid/Gltf/GltfToMesh.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <new>

#include "Corvid/Gltf/GltfMaterials.h"
#include "Corvid/Gltf/GltfNotes.h"
#include "Corvid/Gltf/GltfPoints.h"
#include "Corvid/Gltf/GltfRecord.h"
#include "Corvid/Gltf/GltfScene.h"
#include "Corvid/Gltf/GltfSurface.h"

namespace Corvid {

namespace {

class MeshMaker {
public:
    MeshMaker(const GltfDocument& document, MeshData& mesh, std::vector<std::string>& warnings)
        : m_Document(document), m_Mesh(mesh), m_Warnings(warnings) {}

    bool Make(std::string& error) {
        if (!PlaceGltfNodes(m_Document, m_Nodes, error))
            return false;
        const GltfNotes* record = FindRecord();
        GltfSurface surface(m_Document, record != nullptr);
        for (const GltfPlacedNode& placed : m_Nodes) {
            const int index = placed.m_Node->m_Mesh;
            if (index == kGltfNone)
                continue;
            if (index < 0 || static_cast<std::size_t>(index) >= m_Document.m_Meshes.size()) {
                error = "there is no mesh " + std::to_string(index);
                return false;
            }
            if (!surface.AddMesh(m_Document.m_Meshes[static_cast<std::size_t>(index)], placed.m_World, error))
                return false;
        }
        TakeTangents(surface, record);
        TakeSurface(surface, record);
        Warn(surface);
        if (record == nullptr && m_Mesh.m_Vertices.GetSize() == 0 && m_Mesh.m_Points.GetSize() == 0) {
            error = "holds neither triangles nor an empty node";
            return false;
        }
        return true;
    }

private:
    const GltfNotes* FindRecord() const {
        for (const GltfPlacedNode& placed : m_Nodes) {
            if (placed.m_Node->m_Notes.contains(GltfRecord::kShape))
                return &placed.m_Node->m_Notes;
        }
        return nullptr;
    }

    static std::int32_t FindInteger(const GltfNotes* record, const char* name, std::int32_t fallback) {
        const auto values = record != nullptr ? FindIntegers(*record, name) : std::nullopt;
        return values && values->size() == 1 ? values->front() : fallback;
    }

    void TakeTangents(GltfSurface& surface, const GltfNotes* record) {
        const bool areWanted = FindInteger(record, GltfRecord::kHasValidTangents, 1) != 0;
        if (areWanted)
            surface.ComputeTangents();
        m_Mesh.m_HasValidTangents =
            surface.HasTangents() || (areWanted && (record != nullptr || surface.HasCoordinates()));
    }

    void TakeSurface(GltfSurface& surface, const GltfNotes* record) {
        m_Mesh.m_MaxDiffuseMipLevel = FindInteger(record, GltfRecord::kMaxDiffuseMipLevel, 0);
        const std::vector<MeshVertex>& vertices = surface.GetVertices();
        std::vector<MeshTriangle>& triangles = surface.GetTriangles();
        const auto shape = record != nullptr ? record->find(GltfRecord::kShape) : GltfNotes::const_iterator();
        const bool isSameShape = record != nullptr && shape->second == ShapeOf(vertices, triangles);
        if (isSameShape)
            InsertOtherTriangles(*record, triangles);
        m_Mesh.m_Vertices.SetSize(static_cast<int>(vertices.size()));
        m_Mesh.m_Triangles.SetSize(static_cast<int>(triangles.size()));
        TakeMaterials(surface.UsesPlainMaterial());
        TakePoints();
        std::copy(vertices.begin(), vertices.end(), m_Mesh.m_Vertices.begin());
        std::copy(triangles.begin(), triangles.end(), m_Mesh.m_Triangles.begin());
        ComputeBounds();
        if (isSameShape)
            TakeBounds(*record);
    }

    // Each in front of the triangle that has its place now; a place beyond the end is no place.
    static void InsertOtherTriangles(const GltfNotes& record, std::vector<MeshTriangle>& triangles) {
        constexpr std::size_t kWidth = 5;
        const auto noted = FindIntegers(record, GltfRecord::kOtherTriangles);
        if (!noted || noted->empty() || noted->size() % kWidth != 0)
            return;
        std::vector<MeshTriangle> all;
        all.reserve(triangles.size() + noted->size() / kWidth);
        std::size_t taken = 0;
        for (std::size_t i = 0; i < noted->size(); i += kWidth) {
            const std::int32_t* const other = &(*noted)[i];
            while (taken < triangles.size() && static_cast<std::int64_t>(all.size()) < other[0])
                all.push_back(triangles[taken++]);
            MeshTriangle& triangle = all.emplace_back();
            triangle.m_iVertex0 = other[1];
            triangle.m_iVertex1 = other[2];
            triangle.m_iVertex2 = other[3];
            triangle.m_iMaterial = other[4];
        }
        all.insert(all.end(), triangles.begin() + static_cast<std::ptrdiff_t>(taken), triangles.end());
        triangles = std::move(all);
    }

    void TakeMaterials(bool usesPlain) {
        const std::size_t count = m_Document.m_Materials.size();
        m_Mesh.m_Materials.SetSize(static_cast<int>(count) + (usesPlain ? 1 : 0));
        for (std::size_t i = 0; i < count; ++i)
            m_AreNamesWhole =
                TakeGltfMaterial(m_Document.m_Materials[i], m_Document.m_Images, m_Mesh.m_Materials.begin()[i]) &&
                m_AreNamesWhole;
        if (usesPlain)
            MakePlainMaterial(m_Mesh.m_Materials.begin()[count]);
    }

    void TakePoints() {
        const auto isPoint = [](const GltfPlacedNode& placed) {
            return !placed.m_HoldsObject && !placed.m_Node->m_Notes.contains(GltfRecord::kShape);
        };
        m_Mesh.m_Points.SetSize(static_cast<int>(std::count_if(m_Nodes.begin(), m_Nodes.end(), isPoint)));
        MeshPoint* point = m_Mesh.m_Points.begin();
        for (const GltfPlacedNode& placed : m_Nodes) {
            if (isPoint(placed))
                m_AreNamesWhole = TakeGltfPoint(*placed.m_Node, placed.m_World, *point++) && m_AreNamesWhole;
        }
    }

    // A vertex without a finite place is nowhere; without vertices everything is at the origin.
    void ComputeBounds() {
        double radius = 0.0;
        bool isFirst = true;
        m_Mesh.m_MinBoundingExtents = m_Mesh.m_MaxBoundingExtents = Vector3{};
        for (const MeshVertex& vertex : m_Mesh.m_Vertices) {
            const Vector3& p = vertex.m_Position;
            if (!std::isfinite(p.x) || !std::isfinite(p.y) || !std::isfinite(p.z))
                continue;
            Vector3& low = m_Mesh.m_MinBoundingExtents;
            Vector3& high = m_Mesh.m_MaxBoundingExtents;
            low = isFirst ? p : Vector3{std::min(low.x, p.x), std::min(low.y, p.y), std::min(low.z, p.z)};
            high = isFirst ? p : Vector3{std::max(high.x, p.x), std::max(high.y, p.y), std::max(high.z, p.z)};
            radius = std::max(radius, std::hypot(double{p.x}, double{p.y}, double{p.z}));
            isFirst = false;
        }
        m_Mesh.m_BoundingRadius = static_cast<float>(radius);
    }

    void TakeBounds(const GltfNotes& record) {
        float radius[1];
        if (FindFloats(record, GltfRecord::kBoundingRadius, radius))
            m_Mesh.m_BoundingRadius = radius[0];
        const auto take = [&](const char* name, Vector3& vector) {
            float components[3];
            if (FindFloats(record, name, components))
                vector = {components[0], components[1], components[2]};
        };
        take(GltfRecord::kMaxBoundingExtents, m_Mesh.m_MaxBoundingExtents);
        take(GltfRecord::kMinBoundingExtents, m_Mesh.m_MinBoundingExtents);
    }

    void Warn(const GltfSurface& surface) {
        m_Warnings = m_Document.m_NotTranslated;
        m_Warnings.insert(m_Warnings.end(), surface.GetLeftOut().begin(), surface.GetLeftOut().end());
        bool hasOtherTextures = false, isTransparent = false, hasExtensions = false, movesOthers = false;
        for (const GltfMaterial& material : m_Document.m_Materials) {
            hasOtherTextures = hasOtherTextures || material.m_HasOtherTextures;
            isTransparent = isTransparent || material.m_IsTransparent;
            hasExtensions = hasExtensions || material.m_HasExtensions;
            const GltfTextureUse& base = material.m_BaseColorTexture;
            for (const GltfTextureUse* use : {&material.m_EmissiveTexture, &material.m_NormalTexture})
                movesOthers = movesOthers || (use->m_Image != kGltfNone &&
                                              (use->m_Set != 0 || (use->m_IsTransformed && !base.m_IsTransformed)));
            movesOthers = movesOthers || (base.m_Image != kGltfNone && base.m_Set != 0);
        }
        const auto warn = [&](bool isSo, const char* what) {
            if (isSo)
                m_Warnings.emplace_back(what);
        };
        warn(hasOtherTextures, "textures of roughness, metal and occlusion");
        warn(isTransparent, "transparency of materials");
        warn(hasExtensions, "extensions of materials");
        warn(movesOthers, "texture coordinates of a texture's own");
        warn(!m_AreNamesWhole, "the ends of names of more than 255 UTF-16 units");
    }

    const GltfDocument& m_Document;
    MeshData& m_Mesh;
    std::vector<std::string>& m_Warnings;
    std::vector<GltfPlacedNode> m_Nodes;
    bool m_AreNamesWhole = true;
};

} // namespace

bool TakeGltf(const GltfDocument& document, MeshData& mesh, std::vector<std::string>& warnings, std::string& error) {
    try {
        return MeshMaker(document, mesh, warnings).Make(error);
    } catch (const std::bad_alloc&) {
        error = "too little memory";
        return false;
    }
}

} // namespace Corvid
