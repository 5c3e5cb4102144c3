#include "Tests/Corvid/Gltf/GltfFixture.h"
#include "Tests/Corvid/Gltf/MeshSamples.h"

namespace Corvid {
namespace {

class GltfRoundTripTest : public GltfFixture {
protected:
    void ExpectSameBack(const MeshData& mesh) {
        MeshData back;
        ASSERT_TRUE(Import(Export(mesh), back)) << m_Error;
        EXPECT_TRUE(m_Warnings.empty()) << m_Warnings.front();
        EXPECT_EQ(BytesOf(back), BytesOf(mesh));
    }
};

TEST_F(GltfRoundTripTest, EveryRecordComesBackBitForBit) {
    for (unsigned seed = 0; seed < 200; ++seed) {
        SCOPED_TRACE(seed);
        MeshMaker maker(seed, seed % 2 == 0 ? MeshMaker::Numbers::Sound : MeshMaker::Numbers::AnyBits);
        MeshData mesh;
        // One size in four is zero.
        const auto size = [&](int limit) { return maker.Below(4) == 0 ? 0 : maker.Below(limit); };
        maker.Fill(mesh, size(40), size(60), size(5), size(6));
        ExpectSameBack(mesh);
        if (HasFailure())
            return;
    }
}

TEST_F(GltfRoundTripTest, LargeOnesToo) {
    struct Case {
        const char* name;
        int vertices, triangles, materials, points;
    };
    const Case kCases[] = {{"IndicesOf32Bits", 70000, 3000, 3, 0},
                           {"ManyPoints", 3, 1, 0, 4000},
                           {"ManyMaterials", 3, 1, 2000, 0},
                           {"ARunForEachTriangle", 100, 3000, 1000, 0}};
    for (const Case& each : kCases) {
        SCOPED_TRACE(each.name);
        MeshMaker maker(1, MeshMaker::Numbers::AnyBits);
        MeshData mesh;
        maker.Fill(mesh, each.vertices, each.triangles, each.materials, each.points);
        ExpectSameBack(mesh);
    }
}

TEST_F(GltfRoundTripTest, TexturesComeAlongAndKeepTheirNames) {
    MeshMaker maker(7, MeshMaker::Numbers::Sound);
    MeshData mesh;
    maker.Fill(mesh, 3, 1, 2, 0);
    for (MeshMaterial& material : mesh.m_Materials)
        material.m_DiffuseTextureFileName = u"Textures\\Hull.dds";
    const std::string picture = "\x89PNG not looked into";
    int asked = 0;
    const std::string glb = Export(mesh, [&](std::u16string_view name) -> std::optional<std::string> {
        asked += name == u"Textures\\Hull.dds";
        return name == u"Textures\\Hull.dds" ? std::optional(picture) : std::nullopt;
    });
    EXPECT_EQ(asked, 1);
    EXPECT_NE(glb.find(picture), glb.npos);
    MeshData back;
    ASSERT_TRUE(Import(glb, back)) << m_Error;
    EXPECT_EQ(BytesOf(back), BytesOf(mesh));
}

// What an artist changed counts, what travels beside it does not undo that.
TEST_F(GltfRoundTripTest, ChangesMadeElsewhereCount) {
    MeshMaker maker(3, MeshMaker::Numbers::AnyBits);
    MeshData mesh;
    maker.Fill(mesh, 4, 2, 1, 1);
    mesh.m_Vertices[0].m_Position = {1.0f, 2.0f, 3.0f};
    mesh.m_Vertices[1].m_Normal = {0.0f, 5.0f, 0.0f};
    mesh.m_Materials[0].m_Diffuse = {2.0f, 0.5f, 0.25f, 1.0f};
    mesh.m_Materials[0].m_Ambient = {3.0f, 3.0f, 3.0f, 3.0f};
    mesh.m_Points[0].m_Orientation = Matrix33();
    GltfDocument document = MakeGltf(mesh, u"Sample", {});
    const float moved[3] = {10.0f, 20.0f, 30.0f};
    const std::size_t view = static_cast<std::size_t>(
        document.m_Accessors[static_cast<std::size_t>(document.m_Meshes[0].m_Primitives[0].m_Attributes["POSITION"])]
            .m_View);
    std::memcpy(&document.m_Buffers[0][document.m_Views[view].m_Offset], moved, sizeof moved);
    document.m_Materials[0].m_BaseColor[1] = 0.75;
    document.m_Nodes[1].m_Translation = {-7.0, 8.0, 9.0};

    std::string bytes;
    ASSERT_TRUE(WriteGlb(document, bytes, m_Error));
    MeshData back;
    ASSERT_TRUE(Import(bytes, back)) << m_Error;
    EXPECT_EQ(back.m_Vertices[0].m_Position, (Vector3{-10.0f, 20.0f, 30.0f}));
    EXPECT_EQ(back.m_Vertices[1].m_Normal, mesh.m_Vertices[1].m_Normal);
    EXPECT_EQ(back.m_Materials[0].m_Diffuse, (Color{1.0f, 0.75f, 0.25f, 1.0f}));
    EXPECT_EQ(back.m_Materials[0].m_Ambient, mesh.m_Materials[0].m_Ambient);
    EXPECT_EQ(back.m_Points[0].m_Position, (Vector3{7.0f, 8.0f, 9.0f}));
    EXPECT_EQ(back.m_Points[0].m_Orientation, Matrix33::Identity());
    EXPECT_GE(back.m_MaxBoundingExtents.z, 30.0f); // not as stored: computed
}

} // namespace
} // namespace Corvid
