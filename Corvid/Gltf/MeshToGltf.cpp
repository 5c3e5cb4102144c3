#include "Corvid/Gltf/MeshToGltf.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <limits>
#include <map>
#include <span>
#include <utility>

#include "Corvid/Gltf/GltfMaterials.h"
#include "Corvid/Gltf/GltfNotes.h"
#include "Corvid/Gltf/GltfPoints.h"
#include "Corvid/Gltf/GltfRecord.h"
#include "Corvid/Gltf/GltfTransform.h"
#include "Corvid/Gltf/GltfVertex.h"
#include "Engine/File/PathParts.h"
#include "Engine/String/Unicode.h"

namespace Corvid {

namespace {

constexpr std::int32_t kMaxShortIndices = 65535; // the last one of 16 bits means something else to some tools

class GltfMaker {
public:
    GltfMaker(const MeshData& mesh, const TextureReader& readTexture) : m_Mesh(mesh), m_ReadTexture(readTexture) {}

    GltfDocument Make(std::u16string_view name) {
        m_Document.m_Buffers.emplace_back();
        m_Document.m_Roots = {0};
        GltfNode& root = m_Document.m_Nodes.emplace_back();
        root.m_Name = ToUtf8(name);
        AddMaterials();
        AddVertices();
        AddTriangles();
        NoteRecord(m_Document.m_Nodes[0].m_Notes);
        for (const MeshPoint& point : m_Mesh.m_Points) {
            m_Document.m_Nodes[0].m_Children.push_back(static_cast<int>(m_Document.m_Nodes.size()));
            m_Document.m_Nodes.push_back(MakeGltfPoint(point));
        }
        if (m_Document.m_Buffers[0].empty())
            m_Document.m_Buffers.clear();
        return std::move(m_Document);
    }

private:
    int AddView(std::span<const unsigned char> bytes, GltfTarget target) {
        std::vector<unsigned char>& buffer = m_Document.m_Buffers[0];
        buffer.resize((buffer.size() + 3) / 4 * 4);
        m_Document.m_Views.push_back({0, buffer.size(), bytes.size(), 0, target});
        buffer.insert(buffer.end(), bytes.begin(), bytes.end());
        return static_cast<int>(m_Document.m_Views.size()) - 1;
    }

    template <class Number> int AddView(const std::vector<Number>& numbers, GltfTarget target) {
        return AddView({reinterpret_cast<const unsigned char*>(numbers.data()), numbers.size() * sizeof(Number)},
                       target);
    }

    int AddAccessor(GltfAccessor accessor) {
        m_Document.m_Accessors.push_back(std::move(accessor));
        return static_cast<int>(m_Document.m_Accessors.size()) - 1;
    }

    int FindImage(std::u16string_view textureName) {
        const auto [known, isNew] = m_Images.try_emplace(std::u16string(textureName), kGltfNone);
        if (!isNew || !m_ReadTexture)
            return known->second;
        const std::optional<std::string> bytes = m_ReadTexture(textureName);
        if (!bytes)
            return kGltfNone;
        const char* type = bytes->starts_with("\x89PNG") ? "image/png" : "image/jpeg";
        const int view =
            AddView({reinterpret_cast<const unsigned char*>(bytes->data()), bytes->size()}, GltfTarget::None);
        m_Document.m_Images.push_back({ToUtf8(SplitPath(textureName).m_Name), type, view});
        return known->second = static_cast<int>(m_Document.m_Images.size()) - 1;
    }

    void AddMaterials() {
        for (const MeshMaterial& material : m_Mesh.m_Materials)
            m_Document.m_Materials.push_back(
                MakeGltfMaterial(material, [this](std::u16string_view textureName) { return FindImage(textureName); }));
    }

    void AddVertices() {
        const int count = m_Mesh.m_Vertices.GetSize();
        if (count == 0)
            return;
        m_Plain.reserve(static_cast<std::size_t>(count));
        VertexBits differing{};
        for (const MeshVertex& vertex : m_Mesh.m_Vertices) {
            m_Plain.push_back(PlainVertex(vertex, m_Mesh.m_HasValidTangents));
            const VertexBits bits = BitsOf(vertex);
            const VertexBits plainBits = BitsOf(m_Plain.back());
            for (std::size_t i = 0; i < bits.size(); ++i)
                differing[i] |= bits[i] ^ plainBits[i];
        }
        AddPositions();
        AddFloats("NORMAL", 3, [](const MeshVertex& vertex, float* to) { Put(MirrorX(vertex.m_Normal), to); });
        if (m_Mesh.m_HasValidTangents)
            AddTangents();
        AddFloats("TEXCOORD_0", 2,
                  [](const MeshVertex& vertex, float* to) { to[0] = vertex.m_U0, to[1] = vertex.m_V0; });
        AddFloats("TEXCOORD_1", 2,
                  [](const MeshVertex& vertex, float* to) { to[0] = vertex.m_U1, to[1] = vertex.m_V1; });
        for (std::size_t i = 0; i < differing.size(); ++i) {
            if (differing[i] != 0)
                AddOwn(i);
        }
    }

    static void Put(const Vector3& vector, float* to) {
        to[0] = vector.x;
        to[1] = vector.y;
        to[2] = vector.z;
    }

    template <class Fill> int AddFloats(const char* semantic, int width, Fill fill) {
        std::vector<float> numbers(m_Plain.size() * static_cast<std::size_t>(width));
        for (std::size_t i = 0; i < m_Plain.size(); ++i)
            fill(m_Plain[i], &numbers[i * static_cast<std::size_t>(width)]);
        GltfAccessor accessor;
        accessor.m_View = AddView(numbers, GltfTarget::Vertices);
        accessor.m_Width = width;
        accessor.m_Count = m_Plain.size();
        return m_Attributes[semantic] = AddAccessor(std::move(accessor));
    }

    void AddPositions() {
        const int index =
            AddFloats("POSITION", 3, [](const MeshVertex& vertex, float* to) { Put(MirrorX(vertex.m_Position), to); });
        GltfAccessor& accessor = m_Document.m_Accessors[static_cast<std::size_t>(index)];
        accessor.m_Min.assign(3, std::numeric_limits<double>::max());
        accessor.m_Max.assign(3, std::numeric_limits<double>::lowest());
        for (const MeshVertex& vertex : m_Plain) {
            float position[3];
            Put(MirrorX(vertex.m_Position), position);
            for (std::size_t i = 0; i < 3; ++i) {
                accessor.m_Min[i] = std::min(accessor.m_Min[i], static_cast<double>(position[i]));
                accessor.m_Max[i] = std::max(accessor.m_Max[i], static_cast<double>(position[i]));
            }
        }
    }

    // The fourth component tells on which side the bitangent is: the side to which V falls, as textures are laid on.
    void AddTangents() {
        std::vector<double> sides(m_Plain.size(), 0.0);
        for (const MeshTriangle& triangle : m_Mesh.m_Triangles) {
            if (!IsPlain(triangle))
                continue;
            const MeshVertex& a = PlainAt(triangle.m_iVertex0);
            const MeshVertex& b = PlainAt(triangle.m_iVertex1);
            const MeshVertex& c = PlainAt(triangle.m_iVertex2);
            const double area = (double(b.m_U0) - a.m_U0) * (double(c.m_V0) - a.m_V0) -
                                (double(c.m_U0) - a.m_U0) * (double(b.m_V0) - a.m_V0);
            for (const std::int32_t index : {triangle.m_iVertex0, triangle.m_iVertex1, triangle.m_iVertex2})
                sides[static_cast<std::size_t>(index)] += area;
        }
        const auto put = [&](const MeshVertex& vertex, float* to) {
            Put(MirrorX(vertex.m_Tangent), to);
            to[3] = sides[static_cast<std::size_t>(&vertex - m_Plain.data())] < 0.0 ? -1.0f : 1.0f;
        };
        AddFloats("TANGENT", 4, put);
    }

    void AddOwn(std::size_t field) {
        std::vector<std::uint32_t> words;
        words.reserve(m_Plain.size());
        for (const MeshVertex& vertex : m_Mesh.m_Vertices)
            words.push_back(BitsOf(vertex)[field]);
        GltfAccessor accessor;
        accessor.m_View = AddView(words, GltfTarget::Vertices);
        accessor.m_Component = GltfComponent::UInt16;
        accessor.m_Width = 2;
        accessor.m_Count = words.size();
        m_Attributes[kOwnAttributes[field]] = AddAccessor(std::move(accessor));
    }

    bool IsPlain(const MeshTriangle& triangle) const {
        const auto exists = [&](std::int32_t index) { return index >= 0 && index < m_Mesh.m_Vertices.GetSize(); };
        return exists(triangle.m_iVertex0) && exists(triangle.m_iVertex1) && exists(triangle.m_iVertex2);
    }

    const MeshVertex& PlainAt(std::int32_t index) const { return m_Plain[static_cast<std::size_t>(index)]; }

    void AddTriangles() {
        std::vector<std::int32_t> materials; // of each run
        std::vector<std::size_t> ends;       // in the triangles
        for (std::int32_t i = 0; i < m_Mesh.m_Triangles.GetSize(); ++i) {
            const MeshTriangle& triangle = m_Mesh.m_Triangles[i];
            if (!IsPlain(triangle)) {
                m_OtherTriangles.insert(m_OtherTriangles.end(), {i, triangle.m_iVertex0, triangle.m_iVertex1,
                                                                 triangle.m_iVertex2, triangle.m_iMaterial});
                continue;
            }
            m_Triangles.push_back(triangle);
            if (materials.empty() || materials.back() != triangle.m_iMaterial) {
                materials.push_back(triangle.m_iMaterial);
                ends.push_back(0);
            }
            ends.back() = m_Triangles.size();
        }
        if (m_Plain.empty())
            return;
        m_Document.m_Nodes[0].m_Mesh = 0;
        m_Document.m_Meshes.emplace_back().m_Name = m_Document.m_Nodes[0].m_Name;
        if (m_Triangles.empty()) {
            GltfPrimitive& dots = AddPrimitive();
            dots.m_Mode = GltfMode::Points;
            dots.m_Notes[GltfRecord::kOnlyVertices] = "";
            return;
        }
        const bool areShort = m_Plain.size() <= kMaxShortIndices;
        const int view = areShort ? AddIndices<std::uint16_t>() : AddIndices<std::uint32_t>();
        for (std::size_t run = 0; run < ends.size(); ++run) {
            const std::size_t begin = run == 0 ? 0 : ends[run - 1];
            GltfAccessor accessor;
            accessor.m_View = view;
            accessor.m_Offset = begin * 3 * (areShort ? 2 : 4);
            accessor.m_Component = areShort ? GltfComponent::UInt16 : GltfComponent::UInt32;
            accessor.m_Count = (ends[run] - begin) * 3;
            GltfPrimitive& primitive = AddPrimitive();
            primitive.m_Indices = AddAccessor(std::move(accessor));
            if (materials[run] >= 0 && materials[run] < m_Mesh.m_Materials.GetSize())
                primitive.m_Material = materials[run];
            else
                NoteIntegers(primitive.m_Notes, GltfRecord::kMaterial, std::array{materials[run]});
        }
    }

    GltfPrimitive& AddPrimitive() {
        GltfPrimitive& primitive = m_Document.m_Meshes[0].m_Primitives.emplace_back();
        primitive.m_Attributes = m_Attributes;
        return primitive;
    }

    // A mirrored triangle shows its other side: it is turned.
    template <class Number> int AddIndices() {
        std::vector<Number> indices;
        indices.reserve(m_Triangles.size() * 3);
        for (const MeshTriangle& triangle : m_Triangles) {
            for (const std::int32_t index : {triangle.m_iVertex0, triangle.m_iVertex2, triangle.m_iVertex1})
                indices.push_back(static_cast<Number>(index));
        }
        return AddView(indices, GltfTarget::Indices);
    }

    void NoteRecord(GltfNotes& notes) const {
        const auto noteVector = [&](const char* name, const Vector3& vector) {
            NoteFloats(notes, name, std::array{vector.x, vector.y, vector.z});
        };
        NoteIntegers(notes, GltfRecord::kMaxDiffuseMipLevel, std::array{m_Mesh.m_MaxDiffuseMipLevel});
        NoteIntegers(notes, GltfRecord::kHasValidTangents, std::array{std::int32_t{m_Mesh.m_HasValidTangents}});
        NoteFloats(notes, GltfRecord::kBoundingRadius, std::array{m_Mesh.m_BoundingRadius});
        noteVector(GltfRecord::kMaxBoundingExtents, m_Mesh.m_MaxBoundingExtents);
        noteVector(GltfRecord::kMinBoundingExtents, m_Mesh.m_MinBoundingExtents);
        if (!m_OtherTriangles.empty())
            NoteIntegers(notes, GltfRecord::kOtherTriangles, m_OtherTriangles);
        notes[GltfRecord::kShape] = ShapeOf({m_Mesh.m_Vertices.begin(), m_Mesh.m_Vertices.end()}, m_Triangles);
    }

    const MeshData& m_Mesh;
    const TextureReader& m_ReadTexture;
    GltfDocument m_Document;
    std::map<std::u16string, int> m_Images; // by texture name
    std::map<std::string, int> m_Attributes;
    std::vector<MeshVertex> m_Plain;
    std::vector<MeshTriangle> m_Triangles; // whose vertices exist
    std::vector<std::int32_t> m_OtherTriangles;
};

} // namespace

GltfDocument MakeGltf(const MeshData& mesh, std::u16string_view name, const TextureReader& readTexture) {
    return GltfMaker(mesh, readTexture).Make(name);
}

} // namespace Corvid
