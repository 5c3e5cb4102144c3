#include "Corvid/Gltf/GltfSurface.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <numeric>

#include "Corvid/Gltf/GltfNotes.h"
#include "Corvid/Gltf/GltfRecord.h"
#include "Corvid/Gltf/GltfVertex.h"

namespace Corvid {

namespace {

// A byte can be an index of its own, and a strip makes a triangle of each index. Nodes that repeat a mesh live on the
// slack.
constexpr std::size_t kElementsPerByte = 4;
constexpr std::size_t kElementsOfAnyFile = 1 << 20;

constexpr std::size_t kMaxLeftOut = 16; // kinds of things that are told

Vector3 Cross(const Vector3& a, const Vector3& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

Vector3 AcrossNormal(const Vector3& direction, const Vector3& normal) {
    return direction - normal * Dot(direction, normal);
}

// Negating leaves a negative zero in every plane through the origin; nobody wants to see it.
float WithoutSignOfZero(float value) {
    return value == 0.0f ? 0.0f : value;
}

} // namespace

struct GltfSurface::Attributes {
    std::size_t m_Count = 0;
    std::vector<float> m_Positions, m_Normals, m_Tangents, m_Coordinates0, m_Coordinates1; // empty: not there
    const GltfTextureUse* m_CoordinateTransform = nullptr;
};

GltfSurface::GltfSurface(const GltfDocument& document, bool isOwn)
    : m_Document(document),
      m_Access(document),
      m_IsOwn(isOwn),
      m_MaxElements(std::min<std::size_t>(kElementsOfAnyFile + document.m_SourceSize * kElementsPerByte,
                                          std::numeric_limits<std::int32_t>::max())) {}

bool GltfSurface::AddMesh(const GltfMesh& mesh, const GltfTransform& world, std::string& error) {
    std::map<PartKey, Part> parts;
    const bool isNew = m_SeenMeshes.insert(&mesh).second;
    for (const GltfPrimitive& primitive : mesh.m_Primitives) {
        // Each node may have the same mesh of many primitives that hold nothing.
        m_Steps += 1 + primitive.m_Attributes.size();
        if (m_Steps > m_MaxElements / kElementsPerByte) {
            error = "describes more primitives than a file of its size may have";
            return false;
        }
        if (isNew)
            NoteLeftOut(primitive);
        if (!AddPrimitive(primitive, world, parts, error))
            return false;
    }
    return true;
}

void GltfSurface::NoteLeftOut(const GltfPrimitive& primitive) {
    const auto note = [&](const std::string& what) {
        if (m_LeftOut.size() < kMaxLeftOut)
            m_LeftOut.insert(what);
    };
    if (primitive.m_HasMorphTargets)
        note("morph targets");
    if (primitive.m_HasExtensions)
        note("extensions of primitives");
    for (const auto& [semantic, accessor] : primitive.m_Attributes) {
        static const std::set<std::string> kKnown = {"POSITION", "NORMAL", "TANGENT", "TEXCOORD_0", "TEXCOORD_1"};
        const bool isOwn = std::find(kOwnAttributes.begin(), kOwnAttributes.end(), semantic) != kOwnAttributes.end();
        if (!isOwn && !kKnown.contains(semantic))
            note("vertex attribute '" + semantic.substr(0, 40) + "'");
    }
    const bool isSurface = primitive.m_Mode == GltfMode::Triangles || primitive.m_Mode == GltfMode::TriangleStrip ||
                           primitive.m_Mode == GltfMode::TriangleFan;
    if (!isSurface && !primitive.m_Notes.contains(GltfRecord::kOnlyVertices))
        note("points and lines");
}

bool GltfSurface::AddPrimitive(const GltfPrimitive& primitive, const GltfTransform& world,
                               std::map<PartKey, Part>& parts, std::string& error) {
    Part part;
    std::vector<std::uint32_t> corners; // three for each triangle
    MeshTriangle triangle;
    const bool isDots = primitive.m_Mode == GltfMode::Points && primitive.m_Notes.contains(GltfRecord::kOnlyVertices);
    if (isDots)
        return FindPart(primitive, world, parts, part, error);
    if (primitive.m_Mode < GltfMode::Triangles || primitive.m_Mode > GltfMode::TriangleFan)
        return true;
    if (!FindPart(primitive, world, parts, part, error) || !ReadCorners(primitive, part, corners, error) ||
        !FindMaterial(primitive, triangle.m_iMaterial, error))
        return false;
    if (m_Triangles.size() + corners.size() / 3 > m_MaxElements) {
        error = "describes more triangles than a file of its size may have";
        return false;
    }
    // X is negated, which shows every triangle's other side: it is turned, but where the node has turned it already.
    const std::size_t second = world.Mirrors() ? 1 : 2;
    for (std::size_t i = 0; i + 3 <= corners.size(); i += 3) {
        const auto corner = [&](std::size_t place) {
            return static_cast<std::int32_t>(part.m_Begin + corners[i + place]);
        };
        triangle.m_iVertex0 = corner(0);
        triangle.m_iVertex1 = corner(second);
        triangle.m_iVertex2 = corner(3 - second);
        if (!AddTriangle(triangle, part, error))
            return false;
    }
    return true;
}

bool GltfSurface::AddTriangle(MeshTriangle triangle, const Part& part, std::string& error) {
    if (part.m_IsFlat) {
        if (GetVertexCount() + 3 > m_MaxElements) {
            error = "describes more vertices than a file of its size may have";
            return false;
        }
        std::int32_t* const corners[] = {&triangle.m_iVertex0, &triangle.m_iVertex1, &triangle.m_iVertex2};
        const std::size_t begin = m_Vertices.size();
        for (std::int32_t* corner : corners) {
            m_Vertices.push_back(m_FlatVertices[static_cast<std::size_t>(*corner)]);
            *corner = static_cast<std::int32_t>(m_Vertices.size()) - 1;
        }
        m_LacksTangent.resize(m_Vertices.size(), true);
        const Vector3 origin = m_Vertices[begin].m_Position;
        const Vector3 normal =
            UnitOr(Cross(m_Vertices[begin + 1].m_Position - origin, m_Vertices[begin + 2].m_Position - origin),
                   {0.0f, 1.0f, 0.0f});
        for (std::size_t i = begin; i < begin + 3; ++i)
            m_Vertices[i].m_Normal = normal;
    }
    m_Triangles.push_back(triangle);
    return true;
}

bool GltfSurface::FindMaterial(const GltfPrimitive& primitive, std::int32_t& material, std::string& error) {
    material = static_cast<std::int32_t>(m_Document.m_Materials.size());
    if (primitive.m_Material != kGltfNone) {
        if (primitive.m_Material < 0 || primitive.m_Material >= material) {
            error = "there is no material " + std::to_string(primitive.m_Material);
            return false;
        }
        material = primitive.m_Material;
    } else if (const auto noted = FindIntegers(primitive.m_Notes, GltfRecord::kMaterial); noted && noted->size() == 1) {
        material = noted->front();
    } else {
        m_UsesPlainMaterial = true;
    }
    return true;
}

const GltfTextureUse* GltfSurface::FindCoordinateTransform(const GltfPrimitive& primitive) const {
    const bool hasMaterial =
        primitive.m_Material >= 0 && static_cast<std::size_t>(primitive.m_Material) < m_Document.m_Materials.size();
    const GltfTextureUse* use =
        hasMaterial ? &m_Document.m_Materials[static_cast<std::size_t>(primitive.m_Material)].m_BaseColorTexture
                    : nullptr;
    return use != nullptr && use->m_IsTransformed && use->m_Set == 0 ? use : nullptr;
}

bool GltfSurface::FindPart(const GltfPrimitive& primitive, const GltfTransform& world, std::map<PartKey, Part>& parts,
                           Part& part, std::string& error) {
    const bool isMoved = FindCoordinateTransform(primitive) != nullptr;
    const auto [found, isNew] = parts.try_emplace({primitive.m_Attributes, isMoved ? primitive.m_Material : kGltfNone});
    if (!isNew) {
        part = found->second;
        return true;
    }
    Attributes attributes;
    if (!ReadAttributes(primitive, attributes, error))
        return false;
    attributes.m_CoordinateTransform = FindCoordinateTransform(primitive);
    const bool isFlat = attributes.m_Normals.empty() && primitive.m_Mode != GltfMode::Points;
    std::vector<MeshVertex>& vertices = isFlat ? m_FlatVertices : m_Vertices;
    part = {vertices.size(), attributes.m_Count, isFlat};
    found->second = part;
    const bool hasTangents = !attributes.m_Tangents.empty();
    m_HasTangents = m_HasTangents || hasTangents;
    m_HasCoordinates = m_HasCoordinates || !attributes.m_Coordinates0.empty();
    for (std::size_t i = 0; i < attributes.m_Count; ++i)
        vertices.push_back(PlaceVertex(attributes, i, world));
    m_LacksTangent.resize(m_Vertices.size(), !hasTangents);
    RestoreOwnBits(primitive, std::span(vertices).subspan(part.m_Begin), hasTangents);
    return true;
}

bool GltfSurface::ReadAttributes(const GltfPrimitive& primitive, Attributes& attributes, std::string& error) const {
    const auto read = [&](const char* semantic, int width, std::vector<float>& values) {
        const auto found = primitive.m_Attributes.find(semantic);
        if (found == primitive.m_Attributes.end())
            return true;
        if (!m_Access.ReadFloats(found->second, width, m_MaxElements - GetVertexCount(), values, error)) {
            error = std::string(semantic) + ": " + error;
            return false;
        }
        return true;
    };
    if (!primitive.m_Attributes.contains("POSITION")) {
        error = "a primitive has no positions";
        return false;
    }
    if (!read("POSITION", 3, attributes.m_Positions) || !read("NORMAL", 3, attributes.m_Normals) ||
        !read("TEXCOORD_0", 2, attributes.m_Coordinates0) || !read("TEXCOORD_1", 2, attributes.m_Coordinates1) ||
        (!attributes.m_Normals.empty() && !read("TANGENT", 4, attributes.m_Tangents)))
        return false;
    attributes.m_Count = attributes.m_Positions.size() / 3;
    const auto fits = [&](const std::vector<float>& values, std::size_t width) {
        return values.empty() || values.size() / width == attributes.m_Count;
    };
    if (!fits(attributes.m_Normals, 3) || !fits(attributes.m_Tangents, 4) || !fits(attributes.m_Coordinates0, 2) ||
        !fits(attributes.m_Coordinates1, 2)) {
        error = "the attributes of a primitive differ in their counts";
        return false;
    }
    return true;
}

MeshVertex GltfSurface::PlaceVertex(const Attributes& attributes, std::size_t index, const GltfTransform& world) const {
    const auto vectorAt = [&](const std::vector<float>& values, std::size_t width) {
        const float* const at = &values[index * width];
        return Vector3{at[0], at[1], at[2]};
    };
    const bool isPlaced = !world.IsIdentity();
    const auto mirrored = [&](const Vector3& vector) {
        const Vector3 result = MirrorX(vector);
        return m_IsOwn ? result : Vector3{WithoutSignOfZero(result.x), result.y, result.z};
    };
    MeshVertex vertex{};
    const Vector3 position = vectorAt(attributes.m_Positions, 3);
    vertex.m_Position = mirrored(isPlaced ? world.ApplyToPosition(position) : position);
    if (!attributes.m_Normals.empty()) {
        const Vector3 normal = vectorAt(attributes.m_Normals, 3);
        vertex.m_Normal = mirrored(isPlaced ? UnitOr(world.ApplyToNormal(normal), normal) : normal);
    }
    if (!attributes.m_Tangents.empty()) {
        const Vector3 tangent = vectorAt(attributes.m_Tangents, 4);
        vertex.m_Tangent = mirrored(isPlaced ? UnitOr(world.ApplyToDirection(tangent), tangent) : tangent);
    }
    if (!attributes.m_Coordinates0.empty()) {
        double u = attributes.m_Coordinates0[index * 2], v = attributes.m_Coordinates0[index * 2 + 1];
        vertex.m_U0 = static_cast<float>(u);
        vertex.m_V0 = static_cast<float>(v);
        if (const GltfTextureUse* use = attributes.m_CoordinateTransform; use != nullptr) {
            u *= use->m_Scale[0];
            v *= use->m_Scale[1];
            const double sine = std::sin(use->m_Rotation), cosine = std::cos(use->m_Rotation);
            vertex.m_U0 = static_cast<float>(use->m_Offset[0] + u * cosine + v * sine);
            vertex.m_V0 = static_cast<float>(use->m_Offset[1] - u * sine + v * cosine);
        }
    }
    if (!attributes.m_Coordinates1.empty()) {
        vertex.m_U1 = attributes.m_Coordinates1[index * 2];
        vertex.m_V1 = attributes.m_Coordinates1[index * 2 + 1];
    }
    return vertex;
}

void GltfSurface::RestoreOwnBits(const GltfPrimitive& primitive, std::span<MeshVertex> vertices,
                                 bool hasTangents) const {
    std::vector<std::vector<std::uint32_t>> words(kOwnAttributes.size()); // empty: as the standard attribute has it
    bool hasAny = false;
    for (std::size_t field = 0; field < kOwnAttributes.size(); ++field) {
        const auto found = primitive.m_Attributes.find(kOwnAttributes[field]);
        if (found != primitive.m_Attributes.end())
            hasAny = m_Access.ReadWords(found->second, vertices.size(), words[field]) || hasAny;
    }
    for (std::size_t i = 0; hasAny && i < vertices.size(); ++i) {
        MeshVertex& vertex = vertices[i];
        VertexBits bits = BitsOf(vertex);
        for (std::size_t field = 0; field < words.size(); ++field) {
            if (!words[field].empty())
                bits[field] = words[field][i];
        }
        const auto restored = std::bit_cast<MeshVertex>(bits);
        if (BitsOf(PlainVertex(restored, hasTangents)) == BitsOf(vertex))
            vertex = restored;
    }
}

bool GltfSurface::ReadCorners(const GltfPrimitive& primitive, const Part& part, std::vector<std::uint32_t>& corners,
                              std::string& error) {
    std::vector<std::uint32_t> indices;
    if (primitive.m_Indices == kGltfNone) {
        indices.resize(part.m_Count);
        std::iota(indices.begin(), indices.end(), 0u);
    } else if (!m_Access.ReadIndices(primitive.m_Indices, m_MaxElements * 3 - m_ReadIndices, indices, error)) {
        error = "indices: " + error;
        return false;
    }
    m_ReadIndices += std::min(indices.size(), m_MaxElements * 3 - m_ReadIndices);
    for (const std::uint32_t index : indices) {
        if (index >= part.m_Count) {
            error =
                "indices: " + std::to_string(index) + ", and there are " + std::to_string(part.m_Count) + " vertices";
            return false;
        }
    }
    if (primitive.m_Mode == GltfMode::Triangles) {
        indices.resize(indices.size() / 3 * 3);
        corners = std::move(indices);
        return true;
    }
    // Strips are joined by triangles without an area.
    const bool isStrip = primitive.m_Mode == GltfMode::TriangleStrip;
    for (std::size_t i = 0; i + 2 < indices.size(); ++i) {
        const std::uint32_t a = indices[isStrip ? i : 0];
        const std::uint32_t b = indices[isStrip && i % 2 != 0 ? i + 2 : i + 1];
        const std::uint32_t c = indices[isStrip && i % 2 != 0 ? i + 1 : i + 2];
        if (a != b && b != c && a != c)
            corners.insert(corners.end(), {a, b, c});
    }
    return true;
}

void GltfSurface::ComputeTangents() {
    std::vector<Vector3> sums(m_Vertices.size(), Vector3{});
    for (const MeshTriangle& triangle : m_Triangles) {
        const std::int32_t corners[] = {triangle.m_iVertex0, triangle.m_iVertex1, triangle.m_iVertex2};
        const auto at = [&](int i) -> const MeshVertex& { return m_Vertices[static_cast<std::size_t>(corners[i])]; };
        const Vector3 side1 = at(1).m_Position - at(0).m_Position;
        const Vector3 side2 = at(2).m_Position - at(0).m_Position;
        const float v1 = at(1).m_V0 - at(0).m_V0;
        const float v2 = at(2).m_V0 - at(0).m_V0;
        const float area = (at(1).m_U0 - at(0).m_U0) * v2 - (at(2).m_U0 - at(0).m_U0) * v1;
        if (!(std::abs(area) > 0.0f))
            continue;
        const Vector3 alongU = (side1 * v2 - side2 * v1) * (area < 0.0f ? -1.0f : 1.0f);
        for (const std::int32_t corner : corners)
            sums[static_cast<std::size_t>(corner)] = sums[static_cast<std::size_t>(corner)] + alongU;
    }
    for (std::size_t i = 0; i < m_Vertices.size(); ++i) {
        if (!m_LacksTangent[i])
            continue;
        const Vector3& normal = m_Vertices[i].m_Normal;
        const Vector3 axis = std::abs(normal.x) < 0.9f ? Vector3{1.0f, 0.0f, 0.0f} : Vector3{0.0f, 0.0f, 1.0f};
        const Vector3 any = UnitOr(AcrossNormal(axis, normal), axis);
        m_Vertices[i].m_Tangent = UnitOr(AcrossNormal(UnitOr(sums[i], any), normal), any);
    }
}

} // namespace Corvid
