#include "Corvid/Commands/Info.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "Tests/Support/CorvidRun.h"
#include "Tests/Support/SpelledFile.h"
#include "Tests/Support/WorkingFolder.h"

namespace Corvid {
namespace {

// Three materials of which the middle one is not used, four vertices of which one repeats another, a radius and extents
// that are not those of the vertices.
SpelledFile Wedge() {
    SpelledFile file;
    file.Begin("MeshData").Int("maxDiffuseMipLevel", 0).Bool("hasValidTangents", false).Float("BoundingRadius", 9.0f);
    file.Vector("MaxBoundingExtents", {1, 2, 3}).Vector("MinBoundingExtents", {-1, -2, -3});
    file.Int("NumMaterials", 3);
    for (const char* texture : {"Hull.dds", "", "Glass"}) {
        file.Begin("Material").String("DiffuseTextureFileName", texture);
        for (const char* label : {"SelfIlluminationTextureFileName", "NormalTextureFileName",
                                  "DisplacementTextureFileName", "TeamColorTextureFileName"})
            file.String(label, "");
        for (const char* label : {"Diffuse", "Ambient", "Specular", "Emissive"})
            file.Color(label, "0", {0, 0, 0, 0});
        file.Float("Glossiness", 0.5f).End();
    }
    file.Int("NumPoints", 0).Int("NumVertices", 4);
    for (const auto& position :
         {std::array{0.0f, 0.0f, 0.0f}, {3.0f, 0.0f, 4.0f}, {0.0f, 0.0f, 0.0f}, {-1.0f, 2.0f, 0.5f}}) {
        file.Begin("Vertex").Vector("Position", position).Vector("Normal", {0, 1, 0}).Vector("Tangent", {1, 0, 0});
        file.Color("Color", "0", {0, 0, 0, 0});
        for (const char* label : {"U0", "V0", "U1", "V1"})
            file.Float(label, 0.0f);
        file.End();
    }
    file.Int("NumTriangles", 2);
    for (const int material : {2, 0})
        file.Begin("Triangle")
            .Int("iVertex0", 0)
            .Int("iVertex1", 1)
            .Int("iVertex2", 3)
            .Int("iMaterial", material)
            .End();
    for (const char* direction : {"UP", "DOWN", "LEFT", "RIGHT", "FRONT", "BACK"})
        file.Int(("NumCachedVertexIndicesInDirection:" + std::string(direction)).c_str(), 0);
    return file;
}

class InfoCommandTest : public ::testing::Test {
protected:
    WorkingFolder m_Folder;
};

TEST_F(InfoCommandTest, FiguresOfAMesh) {
    WriteFile("wedge.mesh", Wedge().GetText());
    WriteFile("wedge-binary.mesh", Wedge().GetBinary());
    const std::string rest =
        "\"counts\":{\"NumMaterials\":3,\"NumPoints\":0,\"NumVertices\":4,\"NumTriangles\":2,"
        "\"NumCachedVertexIndicesInDirection:UP\":0,\"NumCachedVertexIndicesInDirection:DOWN\":0,"
        "\"NumCachedVertexIndicesInDirection:LEFT\":0,\"NumCachedVertexIndicesInDirection:RIGHT\":0,"
        "\"NumCachedVertexIndicesInDirection:FRONT\":0,\"NumCachedVertexIndicesInDirection:BACK\":0},"
        "\"bounds\":{\"radius\":9.0,\"min\":[-1.0,-2.0,-3.0],\"max\":[1.0,2.0,3.0],\"actualRadius\":5.0,"
        "\"actualMin\":[-1.0,0.0,0.0],\"actualMax\":[3.0,2.0,4.0]},"
        "\"references\":[{\"field\":\"MeshData.Material[0].DiffuseTextureFileName\",\"name\":\"Hull.dds\"},"
        "{\"field\":\"MeshData.Material[2].DiffuseTextureFileName\",\"name\":\"Glass\"}],"
        "\"unusedMaterials\":[1],\"repeatedVertices\":1}\n";
    const auto sizeOf = [](const char* path) { return std::to_string(std::filesystem::file_size(path)); };
    EXPECT_EQ(CorvidRun({"info", "--json", "wedge.mesh"}).m_Output,
              "{\"file\":\"wedge.mesh\",\"kind\":\"mesh\",\"encoding\":\"text\",\"bytes\":" + sizeOf("wedge.mesh") +
                  "," + rest);
    EXPECT_EQ(CorvidRun({"info", "--json", "wedge-binary.mesh"}).m_Output,
              "{\"file\":\"wedge-binary.mesh\",\"kind\":\"mesh\",\"encoding\":\"binary\",\"bytes\":" +
                  sizeOf("wedge-binary.mesh") + "," + rest);
    EXPECT_EQ(CorvidRun({"info", "wedge-binary.mesh"}).m_Output,
              "wedge-binary.mesh\n  kind          mesh\n  encoding      binary\n  size          " +
                  sizeOf("wedge-binary.mesh") +
                  " bytes\n  NumMaterials  3\n  NumPoints     0\n  NumVertices   4\n  NumTriangles  2\n"
                  "  bounds        radius 9.0, from [ -1.0 -2.0 -3.0 ] to [ 1.0 2.0 3.0 ]\n"
                  "  actual        radius 5.0, from [ -1.0 0.0 0.0 ] to [ 3.0 2.0 4.0 ]\n"
                  "  repeated      1 vertices equal an earlier one\n  unused        materials 1\n"
                  "  names         \"Hull.dds\" (texture, MeshData.Material[0].DiffuseTextureFileName)\n"
                  "                \"Glass\" (texture, MeshData.Material[2].DiffuseTextureFileName)\n");
}

TEST_F(InfoCommandTest, OtherKindsAndTotals) {
    std::filesystem::create_directory("d");
    WriteFile("d/a.entity", "TXT\nentityType \"Fleet\"\ndefaultCohesionRange \"Near\"\n");
    WriteFile("d/b.brushes", "TXT\nonlyLoadOnDemand FALSE\nbrushCount 1\nbrush\n\tname \"x\"\n\tcontent \"Simple\"\n"
                             "\tfileName \"Panels.tga\"\n\tpixelBox [ 0 , 0 , 8 , 8 ]\n");
    WriteFile("d/c.mesh", "garbage");
    const CorvidRun run({"info", "--json", "d"});
    EXPECT_EQ(run.m_Status, 1);
    EXPECT_EQ(
        run.m_Output,
        "{\"file\":\"d/a.entity\",\"kind\":\"entity\",\"encoding\":\"text\",\"bytes\":51,\"entityType\":\"Fleet\","
        "\"layout\":\"built-in\",\"counts\":{},\"references\":[]}\n"
        "{\"file\":\"d/b.brushes\",\"kind\":\"brushes\",\"encoding\":\"text\",\"bytes\":125,\"counts\":"
        "{\"brushCount\":1},\"references\":[{\"field\":\"brush[0].fileName\",\"name\":\"Panels.tga\"}]}\n"
        "{\"file\":\"d/c.mesh\",\"bytes\":7}\n"
        "{\"summary\":{\"files\":3,\"bytes\":183,\"kinds\":{\"brushes\":1,\"entity\":1,\"unknown\":1}}}\n");
    EXPECT_NE(run.m_Errors.find("[not-an-archive]"), std::string::npos);
    const std::string text = CorvidRun({"info", "d"}).m_Output;
    EXPECT_NE(text.find("kind           files           bytes\n"
                        "brushes            1             125\n"
                        "entity             1              51\n"
                        "unknown            1               7\n"
                        "all                3             183\n"),
              std::string::npos)
        << text;
    EXPECT_EQ(CorvidRun({"info", "-"}).m_Status, 2);
}

} // namespace
} // namespace Corvid
