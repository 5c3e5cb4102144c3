#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <set>

#include "Tests/Corvid/Gltf/GltfFixture.h"
#include "Tests/Corvid/Gltf/GltfText.h"
#include "Tests/Corvid/Gltf/MeshSamples.h"
#include "Tests/Engine/File/TemporaryFolder.h"

namespace Corvid {
namespace {

// What other tools say of our files, and what we make of theirs. CORVID_NPM_FOLDER names a folder where npm has
// installed 'gltf-validator' and 'gltfpack'; where a tool is not there, its test says so.
class GltfToolsTest : public GltfFixture {
protected:
    std::string PathTo(const std::string& name) const { return m_Folder.GetName(name); }

    bool Run(const std::string& command) {
        const int status = std::system((command + " > '" + PathTo("output") + "' 2>&1").c_str());
        m_Output = m_Folder.Get("output");
        return status == 0;
    }

    static std::string NpmFolder() {
        const char* folder = std::getenv("CORVID_NPM_FOLDER");
        return folder != nullptr ? folder : "";
    }

    TemporaryFolder m_Folder;
    std::string m_Output;
};

// A figure that every writer has to bring over: a ring of squares, two materials, coordinates, normals.
void FillRing(MeshData& mesh) {
    constexpr int kCount = 24;
    mesh.m_HasValidTangents = true;
    mesh.m_Vertices.SetSize(kCount * 2);
    for (int i = 0; i < kCount; ++i) {
        const float angle = 6.2831853f * static_cast<float>(i) / static_cast<float>(kCount - 1);
        for (int side = 0; side < 2; ++side) {
            MeshVertex& vertex = mesh.m_Vertices[i * 2 + side];
            vertex = {};
            vertex.m_Position = {3.0f * std::cos(angle), 3.0f * std::sin(angle), static_cast<float>(side)};
            vertex.m_Normal = {std::cos(angle), std::sin(angle), 0.0f};
            vertex.m_Tangent = {-std::sin(angle), std::cos(angle), 0.0f};
            vertex.m_U0 = static_cast<float>(i) / static_cast<float>(kCount - 1);
            vertex.m_V0 = static_cast<float>(side);
        }
    }
    mesh.m_Triangles.SetSize((kCount - 1) * 2);
    for (int i = 0; i < kCount - 1; ++i) {
        const int corner = i * 2;
        MeshTriangle& first = mesh.m_Triangles[corner];
        MeshTriangle& second = mesh.m_Triangles[corner + 1];
        first.m_iVertex0 = corner, first.m_iVertex1 = corner + 1, first.m_iVertex2 = corner + 2;
        second.m_iVertex0 = corner + 2, second.m_iVertex1 = corner + 1, second.m_iVertex2 = corner + 3;
    }
    mesh.m_Materials.SetSize(1);
    mesh.m_Materials[0].m_Diffuse = {0.5f, 0.25f, 1.0f, 1.0f};
    mesh.m_Materials[0].m_DiffuseTextureFileName = u"Hull.dds"; // without one, coordinates are dropped
}

std::optional<std::string> ReadPicture(std::u16string_view) {
    static constexpr unsigned char kPixel[] = {
        0x89, 0x50, 0x4e, 0x47, 0x0d, 0x0a, 0x1a, 0x0a, 0x00, 0x00, 0x00, 0x0d, 0x49, 0x48, 0x44, 0x52, 0x00, 0x00,
        0x00, 0x01, 0x00, 0x00, 0x00, 0x01, 0x08, 0x02, 0x00, 0x00, 0x00, 0x90, 0x77, 0x53, 0xde, 0x00, 0x00, 0x00,
        0x0c, 0x49, 0x44, 0x41, 0x54, 0x78, 0x9c, 0x63, 0xf8, 0xdf, 0xe0, 0x00, 0x00, 0x04, 0x41, 0x01, 0xc0, 0x0c,
        0xd1, 0xed, 0x91, 0x00, 0x00, 0x00, 0x00, 0x49, 0x45, 0x4e, 0x44, 0xae, 0x42, 0x60, 0x82};
    return std::string(reinterpret_cast<const char*>(kPixel), sizeof kPixel);
}

// Corners of all triangles and what they carry, to the precision that a quantising writer keeps.
void ExpectSameGeometry(const MeshData& actual, const MeshData& expected) {
    ASSERT_EQ(actual.m_Triangles.GetSize(), expected.m_Triangles.GetSize());
    const auto describe = [](const MeshData& mesh) {
        std::multiset<std::string> triangles;
        for (const MeshTriangle& triangle : mesh.m_Triangles) {
            std::string corners[3];
            int i = 0;
            for (const std::int32_t index : {triangle.m_iVertex0, triangle.m_iVertex1, triangle.m_iVertex2}) {
                const MeshVertex& vertex = mesh.m_Vertices[index];
                for (const float value :
                     {vertex.m_Position.x, vertex.m_Position.y, vertex.m_Position.z, vertex.m_Normal.x,
                      vertex.m_Normal.y, vertex.m_Normal.z, vertex.m_U0, vertex.m_V0})
                    corners[i] += std::to_string(std::lround(value * 20.0f + 1000.25f)) + ' ';
                ++i;
            }
            std::rotate(corners, std::min_element(corners, corners + 3), corners + 3);
            triangles.insert(corners[0] + corners[1] + corners[2]);
        }
        return triangles;
    };
    EXPECT_EQ(describe(actual), describe(expected));
}

TEST_F(GltfToolsTest, TheValidatorFindsNoError) {
    if (NpmFolder().empty())
        GTEST_SKIP() << "no gltf-validator: set CORVID_NPM_FOLDER";
    m_Folder.Put("validate.js",
                 "const v = require('" + NpmFolder() + R"(/node_modules/gltf-validator'), fs = require('fs');
        (async () => { let bad = 0; for (const f of process.argv.slice(2)) {
            const r = await v.validateBytes(new Uint8Array(fs.readFileSync(f)));
            bad += r.issues.numErrors; if (r.issues.numErrors) console.log(f, JSON.stringify(r.issues.messages.slice(0, 3)));
        } process.exit(bad ? 1 : 0); })();)");
    std::string files;
    for (unsigned seed = 0; seed < 60; ++seed) {
        MeshMaker maker(seed, seed % 3 == 0 ? MeshMaker::Numbers::Sound : MeshMaker::Numbers::AnyBits);
        MeshData mesh;
        maker.Fill(mesh, maker.Below(5) == 0 ? 0 : maker.Below(50), maker.Below(40), maker.Below(4), maker.Below(5));
        const std::string name = "random" + std::to_string(seed) + ".glb";
        m_Folder.Put(name, Export(mesh, ReadPicture));
        files += " '" + PathTo(name) + "'";
    }
    EXPECT_TRUE(Run("node '" + PathTo("validate.js") + "'" + files)) << m_Output;
}

TEST_F(GltfToolsTest, AnotherImplementationCountsTheSame) {
    if (!Run("assimp version"))
        GTEST_SKIP() << "no assimp";
    MeshData mesh;
    FillRing(mesh);
    m_Folder.Put("ring.glb", Export(mesh, ReadPicture));
    ASSERT_TRUE(Run("assimp info '" + PathTo("ring.glb") + "'")) << m_Output;
    for (const char* line : {"Vertices:           48\n", "Faces:              46\n", "Materials:          1\n"})
        EXPECT_NE(m_Output.find(line), m_Output.npos) << line << m_Output;
}

TEST_F(GltfToolsTest, WhatOtherWritersMakeOfAMeshIsTheSameMesh) {
    MeshData mesh;
    FillRing(mesh);
    m_Folder.Put("ring.glb", Export(mesh, ReadPicture));
    const struct {
        const char* name;
        bool isThere;
        std::string command;
    } kWriters[] = {
        {"assimp", Run("assimp version"),
         "assimp export '" + PathTo("ring.glb") + "' '" + PathTo("assimp.glb") + "' -fglb2"},
        {"assimp, text", Run("assimp version"),
         "assimp export '" + PathTo("ring.glb") + "' '" + PathTo("assimp.gltf") + "' -fgltf2"},
        {"gltfpack", !NpmFolder().empty(),
         "node '" + NpmFolder() + "/node_modules/gltfpack/cli.js' -i '" + PathTo("ring.glb") + "' -o '" +
             PathTo("pack.glb") + "'"},
    };
    const char* const kResults[] = {"assimp.glb", "assimp.gltf", "pack.glb"};
    int count = 0;
    for (std::size_t i = 0; i < std::size(kWriters); ++i) {
        SCOPED_TRACE(kWriters[i].name);
        if (!kWriters[i].isThere)
            continue;
        ASSERT_TRUE(Run(kWriters[i].command)) << m_Output;
        m_Neighbours["assimp.bin"] = m_Folder.Get("assimp.bin");
        MeshData back;
        ASSERT_TRUE(Import(m_Folder.Get(kResults[i]), back)) << m_Error;
        ExpectSameGeometry(back, mesh);
        EXPECT_NEAR(back.m_BoundingRadius, std::sqrt(10.0f), 1e-3);
        EXPECT_TRUE(back.m_HasValidTangents);
        ++count;
    }
    if (count == 0)
        GTEST_SKIP() << "neither assimp nor gltfpack";
}

} // namespace
} // namespace Corvid
