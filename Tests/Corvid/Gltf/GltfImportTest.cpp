#include <algorithm>
#include <cmath>

#include "Engine/String/Unicode.h"
#include "Tests/Corvid/Gltf/GltfFixture.h"
#include "Tests/Corvid/Gltf/GltfText.h"

namespace Corvid {
namespace {

constexpr const char* kScene = R"("scenes":[{"nodes":[0]}],)";

// Each triangle by its corners' places, as text, in the file's order.
std::string TrianglesOf(const MeshData& mesh) {
    std::string text;
    for (const MeshTriangle& triangle : mesh.m_Triangles) {
        for (const std::int32_t index : {triangle.m_iVertex0, triangle.m_iVertex1, triangle.m_iVertex2}) {
            const Vector3& p = mesh.m_Vertices[index].m_Position;
            char corner[64];
            std::snprintf(corner, sizeof corner, "(%g %g %g)", double{p.x}, double{p.y}, double{p.z});
            text += corner;
        }
        text += ' ';
    }
    return text;
}

class GltfImportTest : public GltfFixture {
protected:
    // A square in the plane z = 1, its corners in the order 0 0, 1 0, 0 1, 1 1.
    static GltfText Square() {
        GltfText file;
        return file.Floats({0, 0, 1, 1, 0, 1, 0, 1, 1, 1, 1, 1});
    }

    void ExpectImport(const std::string& bytes, MeshData& mesh) { ASSERT_TRUE(Import(bytes, mesh)) << m_Error; }
};

// Every way to say the same two triangles.
TEST_F(GltfImportTest, TrianglesComeInManyForms) {
    struct Case {
        const char* name;
        std::string accessors; // beside the positions
        std::string primitive;
        GltfText file;
    };
    const auto with = [](auto... numbers) {
        GltfText file = Square();
        file.Data({numbers...});
        return file;
    };
    const auto indices = [](const char* type, int count) {
        return R"(,{"bufferView":0,"byteOffset":48,"componentType":)" + std::string(type) + R"(,"count":)" +
               std::to_string(count) + R"(,"type":"SCALAR"})";
    };
    using Byte = std::uint8_t;
    using Short = std::uint16_t;
    const Case kCases[] = {
        {"Bytes", indices("5121", 6), R"(,"indices":1)", with(Byte{0}, Byte{1}, Byte{2}, Byte{1}, Byte{3}, Byte{2})},
        {"Shorts", indices("5123", 6), R"(,"indices":1)",
         with(Short{0}, Short{1}, Short{2}, Short{1}, Short{3}, Short{2})},
        {"Words", indices("5125", 6), R"(,"indices":1,"mode":4)", with(0u, 1u, 2u, 1u, 3u, 2u)},
        {"Strip", "", R"(,"mode":5)", Square()},
        {"StripWithJoints", indices("5121", 6), R"(,"indices":1,"mode":5)",
         with(Byte{0}, Byte{0}, Byte{0}, Byte{1}, Byte{2}, Byte{3})},
        {"Incomplete", indices("5121", 8), R"(,"indices":1)",
         with(Byte{0}, Byte{1}, Byte{2}, Byte{1}, Byte{3}, Byte{2}, Byte{0}, Byte{1})},
    };
    for (const Case& each : kCases) {
        SCOPED_TRACE(each.name);
        const std::string members =
            kScene + std::string(R"("nodes":[{"mesh":0}],"meshes":[{"primitives":[{"attributes":{"POSITION":0})") +
            each.primitive + R"(}]}],"accessors":[{"bufferView":0,"componentType":5126,"count":4,"type":"VEC3"})" +
            each.accessors + "]";
        for (const std::string& bytes : {each.file.Glb(members), each.file.Embedded(members)}) {
            MeshData mesh;
            ExpectImport(bytes, mesh);
            EXPECT_EQ(TrianglesOf(mesh), "(0 0 1)(0 1 1)(-1 0 1) (-1 0 1)(0 1 1)(-1 1 1) ");
        }
    }
}

TEST_F(GltfImportTest, FansAndTrianglesWithoutIndices) {
    GltfText file;
    file.Floats({0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 1, 0, 5, 0, 0, 6, 0, 0});
    const auto members = [](const char* mode) {
        return kScene +
               std::string(R"("nodes":[{"mesh":0}],"meshes":[{"primitives":[{"attributes":{"POSITION":0},"mode":)") +
               mode + R"(}]}],"accessors":[{"bufferView":0,"componentType":5126,"count":6,"type":"VEC3"}])";
    };
    MeshData mesh;
    ExpectImport(file.Glb(members("4")), mesh);
    EXPECT_EQ(TrianglesOf(mesh), "(0 0 0)(-1 1 0)(-1 0 0) (0 1 0)(-6 0 0)(-5 0 0) ");
    MeshData fan;
    ExpectImport(file.Glb(members("6")), fan);
    EXPECT_EQ(TrianglesOf(fan),
              "(0 0 0)(-1 1 0)(-1 0 0) (0 0 0)(0 1 0)(-1 1 0) (0 0 0)(-5 0 0)(0 1 0) (0 0 0)(-6 0 0)(-5 0 0) ");
}

// A face keeps its front where a node moves, turns, stretches or mirrors it; normals stay upright and of length one.
TEST_F(GltfImportTest, NodesPlaceTheirMeshes) {
    GltfText file;
    file.Floats({0, 0, 0, 1, 0, 0, 0, 1, 0}).Floats({0, 0, 1, 0, 0, 1, 0, 0, 1});
    struct Case {
        const char* name;
        const char* nodes;
        const char* triangles;
        Vector3 normal;
    };
    const Case kCases[] = {
        {"AsItIs", R"({"mesh":0})", "(0 0 0)(0 1 0)(-1 0 0) ", {0, 0, 1}},
        {"Moved", R"({"mesh":0,"translation":[1,2,3]})", "(-1 2 3)(-1 3 3)(-2 2 3) ", {0, 0, 1}},
        {"Turned", R"({"mesh":0,"rotation":[0,1,0,0]})", "(0 0 0)(0 1 0)(1 0 0) ", {0, 0, -1}},
        {"Stretched", R"({"mesh":0,"scale":[2,3,4]})", "(0 0 0)(0 3 0)(-2 0 0) ", {0, 0, 1}},
        {"Mirrored", R"({"mesh":0,"scale":[-1,1,1]})", "(0 0 0)(1 0 0)(0 1 0) ", {0, 0, 1}},
        {"MirroredThroughItself", R"({"mesh":0,"scale":[1,1,-1]})", "(0 0 0)(-1 0 0)(0 1 0) ", {0, 0, -1}},
        {"ByAMatrix",
         R"({"mesh":0,"matrix":[2,0,0,0, 0,2,0,0, 0,0,2,0, 5,0,0,1]})",
         "(-5 0 0)(-5 2 0)(-7 0 0) ",
         {0, 0, 1}},
        {"InAParent",
         R"({"children":[1],"scale":[2,2,2]},{"mesh":0,"translation":[1,0,0]})",
         "(-2 0 0)(-2 2 0)(-4 0 0) ",
         {0, 0, 1}},
    };
    for (const Case& each : kCases) {
        SCOPED_TRACE(each.name);
        MeshData mesh;
        ExpectImport(file.Glb(kScene + std::string(R"("nodes":[)") + each.nodes +
                              R"(],"meshes":[{"primitives":[{"attributes":{"POSITION":0,"NORMAL":1}}]}],"accessors":[
                                 {"bufferView":0,"componentType":5126,"count":3,"type":"VEC3"},
                                 {"bufferView":0,"byteOffset":36,"componentType":5126,"count":3,"type":"VEC3"}])"),
                     mesh);
        EXPECT_EQ(TrianglesOf(mesh), each.triangles);
        EXPECT_EQ(mesh.m_Vertices[0].m_Normal, each.normal);
    }
}

TEST_F(GltfImportTest, SeveralNodesShareAMeshAndPrimitivesShareVertices) {
    GltfText file = Square();
    file.Data<std::uint8_t>({0, 1, 2, 2, 1, 3});
    file.Floats({0, 0, 1, 0, 0, 1, 0, 0, 1, 0, 0, 1});
    MeshData mesh;
    ExpectImport(
        file.Glb(
            R"("scenes":[{"nodes":[0,1]}],"nodes":[{"mesh":0},{"mesh":0,"translation":[10,0,0]}],"meshes":[{"primitives":[
            {"attributes":{"POSITION":0,"NORMAL":3},"indices":1,"material":0},
            {"attributes":{"POSITION":0,"NORMAL":3},"indices":2}]}],"materials":[{}],
            "bufferViews":[{"buffer":0,"byteLength":48},{"buffer":0,"byteOffset":48,"byteLength":6},
                           {"buffer":0,"byteOffset":54,"byteLength":48}],
            "accessors":[{"bufferView":0,"componentType":5126,"count":4,"type":"VEC3"},
            {"bufferView":1,"componentType":5121,"count":3,"type":"SCALAR"},
            {"bufferView":1,"byteOffset":3,"componentType":5121,"count":3,"type":"SCALAR"},
            {"bufferView":2,"componentType":5126,"count":4,"type":"VEC3"}])"),
        mesh);
    EXPECT_EQ(mesh.m_Vertices.GetSize(), 8);
    ASSERT_EQ(mesh.m_Triangles.GetSize(), 4);
    EXPECT_EQ(mesh.m_Triangles[2].m_iVertex0, 4);
    ASSERT_EQ(mesh.m_Materials.GetSize(), 2); // a plain one for what has none
    EXPECT_EQ(mesh.m_Triangles[1].m_iMaterial, 1);
    EXPECT_EQ(mesh.m_Materials[1].m_Diffuse, kWhite);
    // Extents of all, and the radius about the origin.
    EXPECT_EQ(mesh.m_MinBoundingExtents, (Vector3{-11, 0, 1}));
    EXPECT_EQ(mesh.m_MaxBoundingExtents, (Vector3{0, 1, 1}));
    EXPECT_FLOAT_EQ(mesh.m_BoundingRadius, std::sqrt(123.0f));
}

// Position and normal interleaved, 16-bit coordinates, bytes that mean 0 to 1, and a sparse accessor over nothing.
TEST_F(GltfImportTest, AccessorsOfEveryKind) {
    GltfText file;
    for (int i = 0; i < 3; ++i) {
        file.Data<std::int16_t>({static_cast<std::int16_t>(i * 100), 0, static_cast<std::int16_t>(-i), 0});
        file.Data<std::int8_t>({0, 127, 0, 0});
        file.Data<std::uint16_t>({static_cast<std::uint16_t>(i * 0x5555), 0xFFFF});
    }
    file.Data<std::uint8_t>({0, 2, 0, 0}).Floats({0.5f, 0.25f, 0.125f, 0.0625f});
    MeshData mesh;
    ExpectImport(
        file.Glb(std::string(
                     R"("extensionsRequired":["KHR_mesh_quantization"],"extensionsUsed":["KHR_mesh_quantization"],)") +
                 kScene + R"("nodes":[{"mesh":0,"scale":[0.01,1,1]}],"meshes":[{"primitives":[{"attributes":
            {"POSITION":0,"NORMAL":1,"TEXCOORD_0":2,"TEXCOORD_1":3}}]}],
            "bufferViews":[{"buffer":0,"byteLength":48,"byteStride":16},{"buffer":0,"byteOffset":48,"byteLength":4},
                           {"buffer":0,"byteOffset":52,"byteLength":16}],
            "accessors":[{"bufferView":0,"componentType":5122,"count":3,"type":"VEC3"},
            {"bufferView":0,"byteOffset":8,"componentType":5120,"normalized":true,"count":3,"type":"VEC3"},
            {"bufferView":0,"byteOffset":12,"componentType":5123,"normalized":true,"count":3,"type":"VEC2"},
            {"componentType":5126,"count":3,"type":"VEC2","sparse":{"count":2,
             "indices":{"bufferView":1,"componentType":5121},"values":{"bufferView":2}}}])"),
        mesh);
    EXPECT_EQ(TrianglesOf(mesh), "(0 0 0)(-2 0 -2)(-1 0 -1) ");
    EXPECT_EQ(mesh.m_Vertices[1].m_Normal, (Vector3{0, 1, 0}));
    EXPECT_FLOAT_EQ(mesh.m_Vertices[1].m_U0, 1.0f / 3.0f);
    EXPECT_EQ(mesh.m_Vertices[1].m_V0, 1.0f);
    EXPECT_EQ(mesh.m_Vertices[0].m_U1, 0.5f);
    EXPECT_EQ(mesh.m_Vertices[1].m_U1, 0.0f);
    EXPECT_EQ(mesh.m_Vertices[2].m_V1, 0.0625f);
}

// Two triangles that share an edge: without normals each gets corners of its own, which face where it faces. Tangents
// point where U grows.
TEST_F(GltfImportTest, NormalsAndTangentsAreComputed) {
    GltfText file;
    file.Floats({0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1})
        .Floats({0, 0, 1, 0, 0, 1, 1, 1})
        .Data<std::uint8_t>({0, 1, 2, 0, 2, 3});
    const auto members = [](const char* coordinates) {
        return kScene + std::string(R"("nodes":[{"mesh":0}],"meshes":[{"primitives":[{"attributes":{"POSITION":0)") +
               coordinates + R"(},"indices":2}]}],"accessors":[
               {"bufferView":0,"componentType":5126,"count":4,"type":"VEC3"},
               {"bufferView":0,"byteOffset":48,"componentType":5126,"count":4,"type":"VEC2"},
               {"bufferView":0,"byteOffset":80,"componentType":5121,"count":6,"type":"SCALAR"}])";
    };
    MeshData mesh;
    ExpectImport(file.Glb(members(R"(,"TEXCOORD_0":1)")), mesh);
    EXPECT_EQ(mesh.m_Vertices.GetSize(), 6); // nothing is left of those that had no normal
    const auto corner = [&](int triangle) { return mesh.m_Vertices[mesh.m_Triangles[triangle].m_iVertex0]; };
    EXPECT_EQ(corner(0).m_Normal, (Vector3{0, 0, 1}));
    EXPECT_EQ(corner(1).m_Normal, (Vector3{-1, 0, 0}));
    EXPECT_TRUE(mesh.m_HasValidTangents);
    EXPECT_EQ(corner(0).m_Tangent, (Vector3{-1, 0, 0}));
    MeshData bare;
    ExpectImport(file.Glb(members("")), bare);
    EXPECT_FALSE(bare.m_HasValidTangents); // no direction is better than another
    const MeshVertex& vertex = bare.m_Vertices[bare.m_Triangles[0].m_iVertex0];
    EXPECT_FLOAT_EQ(Dot(vertex.m_Tangent, vertex.m_Tangent), 1.0f);
    EXPECT_FLOAT_EQ(Dot(vertex.m_Tangent, vertex.m_Normal), 0.0f);
}

TEST_F(GltfImportTest, EmptyNodesBecomePoints) {
    GltfText file = Square();
    MeshData mesh;
    ExpectImport(file.Glb(R"("scenes":[{"nodes":[0]}],"nodes":[
            {"name":"Group","children":[1,2,5],"translation":[1,0,0]},
            {"name":"Hull","mesh":0},
            {"name":"Turret","children":[3,4],"rotation":[0,0.7071067811865476,0,0.7071067811865476]},
            {"name":"Muzzle","translation":[0,0,2],"scale":[3,3,3]},
            {"name":"Eye","camera":0},{"translation":[0,5,0]}],"cameras":[{"type":"perspective"}],
            "meshes":[{"primitives":[{"attributes":{"POSITION":0},"mode":5}]}],
            "accessors":[{"bufferView":0,"componentType":5126,"count":4,"type":"VEC3"}])"),
                 mesh);
    ASSERT_EQ(mesh.m_Points.GetSize(), 2);
    EXPECT_EQ(ToUtf8(mesh.m_Points[0].m_DataString.GetView()), "Muzzle");
    EXPECT_NEAR(mesh.m_Points[0].m_Position.x, -3.0f, 1e-6);
    const Vector3 front = mesh.m_Points[0].m_Orientation.GetRow(2);
    EXPECT_NEAR(front.x, -1.0f, 1e-6);
    EXPECT_EQ(mesh.m_Points[1].m_Position, (Vector3{-1, 5, 0}));
    EXPECT_EQ(m_Warnings, std::vector<std::string>{"1 camera"});
}

TEST_F(GltfImportTest, MaterialsKeepColoursAndTextureNames) {
    GltfText file = Square();
    MeshData mesh;
    ExpectImport(
        file.Glb(
            std::string(kScene) +
            R"("nodes":[{"mesh":0}],"meshes":[{"primitives":[{"attributes":{"POSITION":0},"mode":5,"material":0}]}],
            "materials":[{"pbrMetallicRoughness":{"baseColorFactor":[0.5,0.25,1,0.75],"roughnessFactor":0.5,
            "baseColorTexture":{"index":0},"metallicRoughnessTexture":{"index":1}},"emissiveFactor":[1,0,0.5],
            "normalTexture":{"index":1},"alphaMode":"BLEND"}],"textures":[{"source":0},{"source":1}],
            "images":[{"uri":"art/Hull%20Plate.png"},{"name":"Bumps","bufferView":0,"mimeType":"image/png"}],
            "animations":[{"channels":[],"samplers":[]},{}],
            "accessors":[{"bufferView":0,"componentType":5126,"count":4,"type":"VEC3"}])"),
        mesh);
    const MeshMaterial& material = mesh.m_Materials[0];
    EXPECT_EQ(ToUtf8(material.m_DiffuseTextureFileName.GetView()), "Hull Plate.png");
    EXPECT_EQ(ToUtf8(material.m_NormalTextureFileName.GetView()), "Bumps");
    EXPECT_EQ(material.m_Diffuse, (Color{0.5f, 0.25f, 1.0f, 0.75f}));
    EXPECT_EQ(material.m_Emissive, (Color{1.0f, 0.0f, 0.5f, 1.0f}));
    EXPECT_FLOAT_EQ(material.m_Glossiness, 30.0f);
    EXPECT_EQ(m_Warnings, (std::vector<std::string>{"2 animations", "textures of roughness, metal and occlusion",
                                                    "transparency of materials"}));
}

// Only files in the folder of the one that names them are read.
TEST_F(GltfImportTest, BuffersBesideTheFile) {
    struct Case {
        const char* uri;
        const char* asked; // empty: nothing is read
    };
    const Case kCases[] = {{"mesh.bin", "mesh.bin"},
                           {"./data//my%20mesh.bin", "data/my mesh.bin"},
                           {"../mesh.bin", ""},
                           {"a/../../mesh.bin", ""},
                           {"/etc/passwd", ""},
                           {"%2e%2e/mesh.bin", ""},
                           {"C:mesh.bin", ""},
                           {"http://example.org/mesh.bin", ""},
                           {"file:///etc/passwd", ""},
                           {"..%5cmesh.bin", ""},
                           {"a%00b", ""},
                           {"", ""}};
    for (const Case& each : kCases) {
        SCOPED_TRACE(each.uri);
        const GltfText file = Square();
        std::string text =
            file.Spell(std::string(kScene) +
                           R"("nodes":[{"mesh":0}],"meshes":[{"primitives":[{"attributes":{"POSITION":0},"mode":5}]}],
            "accessors":[{"bufferView":0,"componentType":5126,"count":4,"type":"VEC3"}])",
                       "URI");
        text.replace(text.find("URI"), 3, each.uri);
        m_Neighbours = {{each.asked, file.GetBuffer()}};
        m_Asked.clear();
        MeshData mesh;
        EXPECT_EQ(Import(text, mesh), *each.asked != 0) << m_Error;
        EXPECT_EQ(m_Asked, *each.asked != 0 ? std::vector<std::string>{each.asked} : std::vector<std::string>{});
    }
}

} // namespace
} // namespace Corvid
