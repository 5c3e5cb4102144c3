#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "Corvid/Gltf/GltfAccess.h"
#include "Corvid/Gltf/GltfDocument.h"
#include "Corvid/Gltf/GltfTransform.h"
#include "Engine/Render/Mesh/MeshParts.h"
#include "Engine/Render/Mesh/MeshVertex.h"

namespace Corvid {

// Gathers the vertices and triangles of meshes, each where a node places it, in the engine's coordinates.
class GltfSurface {
public:
    // `isOwn`: the file is one of ours, so that not even the sign of a zero may change.
    GltfSurface(const GltfDocument& document, bool isOwn);

    // False, with a clause that says what is wrong.
    bool AddMesh(const GltfMesh& mesh, const GltfTransform& world, std::string& error);

    // For vertices whose part of the file has none. Where there are no texture coordinates, any direction along the
    // surface will do.
    void ComputeTangents();

    bool HasTangents() const { return m_HasTangents; }
    bool HasCoordinates() const { return m_HasCoordinates; }
    bool UsesPlainMaterial() const { return m_UsesPlainMaterial; } // it follows the document's own
    const std::vector<MeshVertex>& GetVertices() const { return m_Vertices; }
    std::vector<MeshTriangle>& GetTriangles() { return m_Triangles; }
    const std::set<std::string>& GetLeftOut() const { return m_LeftOut; }

private:
    // The vertices of primitives of one mesh that share their attributes; those of a flat one are in m_FlatVertices.
    struct Part {
        std::size_t m_Begin = 0;
        std::size_t m_Count = 0;
        bool m_IsFlat = false; // without normals: each triangle has vertices of its own
    };
    using PartKey = std::pair<std::map<std::string, int>, int>; // attributes, and a material that moves coordinates
    struct Attributes;

    bool AddPrimitive(const GltfPrimitive& primitive, const GltfTransform& world, std::map<PartKey, Part>& parts,
                      std::string& error);
    bool FindPart(const GltfPrimitive& primitive, const GltfTransform& world, std::map<PartKey, Part>& parts,
                  Part& part, std::string& error);
    bool ReadAttributes(const GltfPrimitive& primitive, Attributes& attributes, std::string& error) const;
    MeshVertex PlaceVertex(const Attributes& attributes, std::size_t index, const GltfTransform& world) const;
    void RestoreOwnBits(const GltfPrimitive& primitive, std::span<MeshVertex> vertices, bool hasTangents) const;
    bool ReadCorners(const GltfPrimitive& primitive, const Part& part, std::vector<std::uint32_t>& corners,
                     std::string& error);
    bool AddTriangle(MeshTriangle triangle, const Part& part, std::string& error);
    bool FindMaterial(const GltfPrimitive& primitive, std::int32_t& material, std::string& error);
    const GltfTextureUse* FindCoordinateTransform(const GltfPrimitive& primitive) const;
    void NoteLeftOut(const GltfPrimitive& primitive);
    std::size_t GetVertexCount() const { return m_Vertices.size() + m_FlatVertices.size(); }

    const GltfDocument& m_Document;
    GltfAccess m_Access;
    bool m_IsOwn;
    std::size_t m_MaxElements; // vertices, and triangles
    std::size_t m_Steps = 0;   // primitives, and their attributes, that were looked at
    std::set<const GltfMesh*> m_SeenMeshes;
    std::size_t m_ReadIndices = 0;
    std::vector<MeshVertex> m_Vertices;
    std::vector<MeshVertex> m_FlatVertices; // of which triangles take copies
    std::vector<bool> m_LacksTangent;       // by vertex
    std::vector<MeshTriangle> m_Triangles;
    bool m_HasTangents = false;
    bool m_HasCoordinates = false;
    bool m_UsesPlainMaterial = false;
    std::set<std::string> m_LeftOut;
};

} // namespace Corvid
