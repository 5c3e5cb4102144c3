#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "Corvid/Files/FileBytes.h"
#include "Corvid/Program.h"
#include "Tests/Engine/File/TemporaryFolder.h"

namespace Corvid {
namespace {

class Gathered final : public TextOutput {
public:
    std::string Write(std::string_view bytes) override {
        m_Text += bytes;
        return {};
    }
    bool HasLostReader() const override { return false; }

    std::string m_Text;
};

// Runs of the program, its files in a folder of their own.
class ExportImportTest : public testing::Test {
protected:
    int Run(std::vector<std::string> arguments) {
        m_Output.m_Text.clear();
        m_Errors.m_Text.clear();
        Console console(m_Output, m_Errors);
        return RunCorvid(std::move(arguments), console);
    }

    std::string In(const std::string& name) const { return m_Folder.GetName(name); }
    static std::string Example(const std::string& name) { return CORVID_SOURCE_FOLDER "/Examples/" + name; }

    TemporaryFolder m_Folder;
    Gathered m_Output;
    Gathered m_Errors;
};

TEST_F(ExportImportTest, AMeshGoesThereAndBack) {
    ASSERT_EQ(Run({"export", Example("Mesh/cube.mesh"), "-o", In("cube.glb")}), 0) << m_Errors.m_Text;
    ASSERT_EQ(Run({"import", In("cube.glb"), "-o", In("cube.mesh")}), 0) << m_Errors.m_Text;
    EXPECT_EQ(m_Folder.Get("cube.mesh").substr(0, 4), "BIN\n");
    ASSERT_EQ(Run({"import", "--to", "txt", In("cube.glb"), "-o", In("text.MESH")}), 0) << m_Errors.m_Text;
    ASSERT_EQ(Run({"export", In("text.MESH"), "-o", In("again.GLB")}), 0) << m_Errors.m_Text;
    ASSERT_EQ(Run({"export", In("cube.mesh"), "-o", In("once.glb")}), 0);
    EXPECT_EQ(m_Folder.Get("once.glb").size(), m_Folder.Get("cube.glb").size());
    EXPECT_EQ(m_Output.m_Text + m_Errors.m_Text, "");
}

TEST_F(ExportImportTest, TheExtensionSaysTheForm) {
    ASSERT_EQ(Run({"export", Example("Brushes/ConsolePanels.brushes"), "-o", In("panels.svg")}), 0) << m_Errors.m_Text;
    EXPECT_EQ(m_Folder.Get("panels.svg").substr(0, 5), "<?xml");
    for (const char* file : {"Particle/ReactorBlast.particle", "Entity/IceShards.entity", "Mesh/cube.mesh"}) {
        ASSERT_EQ(Run({"export", Example(file), "-o", In("values.json")}), 0) << m_Errors.m_Text;
        ASSERT_EQ(Run({"cat", "--json", Example(file)}), 0);
        EXPECT_EQ(m_Folder.Get("values.json"), m_Output.m_Text);
    }
}

// What cannot be done has its status and a message, and the destination stays as it was.
TEST_F(ExportImportTest, FailuresLeaveTheDestination) {
    m_Folder.Put("bad.mesh", "TXT\nMeshData\n\tNumVertices x\n");
    m_Folder.Put("bad.glb", "glTF and then nothing of the kind");
    m_Folder.Put("text.mesh", "not a mesh");
    m_Folder.Put("lost.gltf", R"({"asset":{"version":"2.0"},"buffers":[{"byteLength":4,"uri":"lost.bin"}]})");
    m_Folder.Put("needs.gltf", R"({"asset":{"version":"2.0"},"extensionsRequired":["EXT_meshopt_compression"]})");
    m_Folder.Put("quoted.gltf", R"({"asset":{"version":"2.0"},"nodes":[{"name":"the \"bow\""}]})");
    const std::string cube = Example("Mesh/cube.mesh");
    const struct {
        std::vector<std::string> arguments;
        int status;
        const char* message;
    } kCases[] = {
        {{"export", cube, "-o", In("out.obj")}, 2, "has to end with .glb, .svg or .json"},
        {{"export", cube, "-o", In("glb")}, 2, "has to end with .glb, .svg or .json"},
        {{"export", cube, "-o", In("out.svg")}, 2, "write .glb or .json"},
        {{"export", Example("Entity/IceShards.entity"), "-o", In("out.glb")}, 2, "write .json"},
        {{"export", cube, "-o", In("out.json"), "--textures", In("")}, 2, "--textures is for .glb"},
        {{"export", cube, "-o", In("out.glb"), "--textures", In("nowhere")}, 2, "[cannot-read]"},
        {{"export", cube}, 2, "-o"},
        {{"export", "-", "-o", In("out.glb")}, 2, "standard input"},
        {{"export", In("nothing.mesh"), "-o", In("out.glb")}, 2, "[cannot-read]"},
        {{"export", In("bad.mesh"), "-o", In("out.glb")}, 1, "error"},
        {{"export", cube, "-o", In("no/such/out.glb")}, 2, "[cannot-write]"},
        {{"import", In("bad.glb"), "-o", In("out.mesh")}, 1, "GLB version"},
        {{"import", In("text.mesh"), "-o", In("out.mesh")}, 1, "[not-an-archive]"},
        {{"import", In("lost.gltf"), "-o", In("out.mesh")}, 2, "lost.bin"},
        {{"import", In("needs.gltf"), "-o", In("out.mesh")}, 1, "'EXT_meshopt_compression'"},
        {{"import", In("quoted.gltf"), "--to", "txt", "-o", In("out.mesh")}, 1, "[not-in-text]"},
        {{"import", In("bad.glb"), "-o", In("out.glb")}, 2, "has to end with .mesh"},
        {{"import", In("text.mesh"), "-o", In("text.mesh")}, 2, "is the file that is read"},
        {{"import", In("nothing.glb"), "-o", In("out.mesh")}, 2, "[cannot-read]"},
    };
    for (const char* name : {"out.glb", "out.svg", "out.json", "out.mesh", "out.obj", "glb"})
        m_Folder.Put(name, "before");
    const auto names = m_Folder.List();
    for (const auto& each : kCases) {
        SCOPED_TRACE(testing::PrintToString(each.arguments));
        EXPECT_EQ(Run(each.arguments), each.status);
        EXPECT_NE(m_Errors.m_Text.find(each.message), std::string::npos) << m_Errors.m_Text;
        EXPECT_EQ(m_Output.m_Text, "");
        EXPECT_EQ(m_Folder.List(), names);
        for (const char* name : {"out.glb", "out.svg", "out.json", "out.mesh", "out.obj", "glb"})
            EXPECT_EQ(m_Folder.Get(name), "before");
        EXPECT_EQ(m_Folder.Get("text.mesh"), "not a mesh");
    }
}

TEST_F(ExportImportTest, PicturesAndBuffersOfFolders) {
    // A mesh without vertices whose material names two textures.
    m_Folder.Put("data.gltf", R"({"asset":{"version":"2.0"},"buffers":[{"byteLength":36,"uri":"part.bin"}],
        "nodes":[{"mesh":0}],"meshes":[{"primitives":[{"attributes":{"POSITION":0},"material":0}]}],
        "bufferViews":[{"buffer":0,"byteLength":36}],
        "accessors":[{"bufferView":0,"componentType":5126,"count":3,"type":"VEC3"}],"animations":[{}],
        "materials":[{"pbrMetallicRoughness":{"baseColorTexture":{"index":0}},"normalTexture":{"index":1}}],
        "textures":[{"source":0},{"source":1}],"images":[{"uri":"Hull.dds"},{"uri":"Bumps.tga"}]})");
    m_Folder.Put("part.bin", std::string(36, '\0'));
    m_Folder.Put("HULL.jpeg", "\xFF\xD8\xFF and so on");
    m_Folder.Put("bumps.png", "no picture");
    ASSERT_EQ(Run({"import", In("data.gltf"), "-o", In("data.mesh")}), 0) << m_Errors.m_Text;
    EXPECT_NE(m_Errors.m_Text.find("warning: 1 animation: a mesh has no place for this [not-imported]"),
              std::string::npos)
        << m_Errors.m_Text;
    ASSERT_EQ(Run({"import", "-q", In("data.gltf"), "-o", In("data.mesh")}), 0);
    EXPECT_EQ(m_Errors.m_Text, "");
    ASSERT_EQ(Run({"export", In("data.mesh"), "-o", In("data.glb"), "--textures", In("")}), 0) << m_Errors.m_Text;
    EXPECT_NE(m_Folder.Get("data.glb").find("\xFF\xD8\xFF and so on"), std::string::npos);
    EXPECT_NE(m_Folder.Get("data.glb").find("image/jpeg"), std::string::npos);
    EXPECT_NE(m_Errors.m_Text.find("bumps.png: neither PNG nor JPEG [missing-reference]"), std::string::npos)
        << m_Errors.m_Text;
}

} // namespace
} // namespace Corvid
