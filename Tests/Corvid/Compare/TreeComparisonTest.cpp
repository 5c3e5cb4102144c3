#include "Corvid/Compare/TreeComparison.h"

#include <gtest/gtest.h>

#include "Tests/Corvid/Compare/CompareFixture.h"

namespace Corvid {
namespace {

using Expected = std::vector<std::string>;

const EditedText::Labels kMaterial = {"Material"};
const EditedText::Labels kPoint = {"Point"};
const EditedText::Labels kVertex = {"Vertex"};
const EditedText::Labels kTriangle = {"Triangle"};
const EditedText::Labels kIndex = {"Index"};
const EditedText::Labels kEmitter = {"EmitterType", "EmitterContents"};
const EditedText::Labels kAffector = {"AffectorType", "AffectorContents"};
const EditedText::Labels kBrush = {"brush"};

class TreeComparisonTest : public CompareFixture {
protected:
    struct Case {
        const char* name;
        void (*edit)(EditedText& text);
        Expected expected;
        CompareOptions options = {};
    };

    // The cube, with four materials: CargoCrate-da.dds, One.dds, Two.dds, Three.dds.
    static std::string Mesh() {
        EditedText text(ReadExample("Mesh/cube.mesh"));
        for (const char* name : {"\"Three.dds\"", "\"Two.dds\"", "\"One.dds\""}) {
            text.Copy("NumMaterials", kMaterial, 0, 0).Move(kMaterial, 0, 1);
            text.Set(kMaterial, 1, "DiffuseTextureFileName", name);
        }
        return text.Get();
    }

    void Run(Kind kind, const std::string& before, std::initializer_list<Case> cases) {
        for (const Case& c : cases) {
            SCOPED_TRACE(c.name);
            EditedText text(before);
            c.edit(text);
            EXPECT_EQ(Compare(kind, before, text.Get(), c.options), c.expected);
        }
    }
};

TEST_F(TreeComparisonTest, SmallEditsOfAMesh) {
    Run(Kind::Mesh, Mesh(),
        {
            {"Same", [](EditedText&) {}, {}},
            {"Value",
             [](EditedText& t) { t.Set(kMaterial, 2, "Glossiness", "60.000000"); },
             {"MeshData.Material[2].Glossiness: 50.0 -> 60.0"}},
            {"EveryKindOfValue",
             [](EditedText& t) {
                 t.Set("maxDiffuseMipLevel", "-2").Set("hasValidTangents", "FALSE").Set("BoundingRadius", "0.57735026");
                 t.Set("MaxBoundingExtents", "[ 0.500000 1.000000e-07 inf ]");
                 t.Set(kMaterial, 1, "Diffuse", "80ff0001");
                 t.Set(kMaterial, 1, "Emissive", "1");
             },
             {"MeshData.maxDiffuseMipLevel: 0 -> -2", "MeshData.hasValidTangents: TRUE -> FALSE",
              "MeshData.BoundingRadius: 0.866025 -> 0.57735026",
              "MeshData.MaxBoundingExtents: [ 0.5 0.5 0.5 ] -> [ 0.5 1.0e-07 inf ]",
              "MeshData.Material[1].Diffuse: #ffffffff -> #80ff0001",
              "MeshData.Material[1].Emissive: #00000000 -> #00000001"}},
            {"MaterialInserted",
             [](EditedText& t) {
                 t.Copy("NumMaterials", kMaterial, 3, 1).Set(kMaterial, 1, "DiffuseTextureFileName", "\"New.dds\"");
             },
             {"+ MeshData.Material[1] \"New.dds\""}},
            {"MaterialDoubled",
             [](EditedText& t) { t.Copy("NumMaterials", kMaterial, 2, 2); },
             {"+ MeshData.Material[3] \"Two.dds\""}},
            {"FirstMaterialRemoved",
             [](EditedText& t) { t.Remove("NumMaterials", kMaterial, 0); },
             {"- MeshData.Material[0] \"CargoCrate-da.dds\""}},
            {"MaterialMovedUp",
             [](EditedText& t) { t.Move(kMaterial, 2, 0); },
             {"MeshData.Material[2] -> MeshData.Material[0] moved"}},
            {"MaterialMovedDown",
             [](EditedText& t) { t.Move(kMaterial, 0, 3); },
             {"MeshData.Material[0] -> MeshData.Material[3] moved"}},
            {"MaterialMovedAndChanged",
             [](EditedText& t) { t.Set(kMaterial, 2, "Glossiness", "1.5").Move(kMaterial, 2, 0); },
             {"MeshData.Material[2] -> MeshData.Material[0] moved", "MeshData.Material[0].Glossiness: 50.0 -> 1.5"}},
            {"MaterialRenamed",
             [](EditedText& t) { t.Set(kMaterial, 1, "DiffuseTextureFileName", "\"\\tab\""); },
             {"MeshData.Material[1].DiffuseTextureFileName: \"One.dds\" -> \"\\tab\""}},
            {"OneRemovedOneChangedOneInserted",
             [](EditedText& t) {
                 t.Remove("NumMaterials", kMaterial, 0).Set(kMaterial, 1, "Ambient", "ff000000");
                 t.Copy("NumMaterials", kMaterial, 2, 2).Set(kMaterial, 3, "DiffuseTextureFileName", "\"New.dds\"");
             },
             {"- MeshData.Material[0] \"CargoCrate-da.dds\"", "MeshData.Material[1].Ambient: #ff404040 -> #ff000000",
              "+ MeshData.Material[3] \"New.dds\""}},
            {"AllPointsRemoved",
             [](EditedText& t) { t.Remove("NumPoints", kPoint, 0).Remove("NumPoints", kPoint, 0); },
             {"- MeshData.Point[0] \"Hook-Top\"", "- MeshData.Point[1] \"Exhaust\""}},
            {"PointsSwapped", // one of them moved
             [](EditedText& t) { t.Move(kPoint, 1, 0); },
             {"MeshData.Point[0] -> MeshData.Point[1] moved"}},
            {"PointNearlyOpposite",
             [](EditedText& t) { t.Set(kPoint, 1, "Position", "[ 0.000000 -0.000000 -0.500000 ]"); },
             {"MeshData.Point[1].Position: [ 0.0 0.0 -0.5 ] -> [ 0.0 -0.0 -0.5 ]"}},
        });
}

TEST_F(TreeComparisonTest, VerticesTrianglesAndListsOfAMesh) {
    const auto twoVertices = [](EditedText& t) {
        t.Set(kVertex, 17, "Position", "[ -0.250000 -0.500000 0.500000 ]").Set(kVertex, 3, "U0", "0.125000");
    };
    Run(Kind::Mesh, Mesh(),
        {
            {"Vertices",
             twoVertices,
             {"MeshData.Vertex: 2 of 24 differ, Position by at most 0.25 at Vertex[17], U0 by at most 0.125 at "
              "Vertex[3]"}},
            {"VerticesInFull",
             twoVertices,
             {"MeshData.Vertex[3].U0: 0.0 -> 0.125",
              "MeshData.Vertex[17].Position: [ -0.5 -0.5 0.5 ] -> [ -0.25 -0.5 0.5 ]"},
             {.m_IsFull = true}},
            {"NotANumber",
             [](EditedText& t) { t.Set(kVertex, 1, "V1", "nan").Set(kVertex, 2, "V1", "5.0"); },
             {"MeshData.Vertex: 2 of 24 differ, V1 by at most nan at Vertex[1]"}},
            {"VertexInserted",
             [](EditedText& t) { t.Copy("NumVertices", kVertex, 20, 4).Set(kVertex, 4, "U0", "7.0"); },
             {"+ MeshData.Vertex: 1 of 25, first at Vertex[4]"}},
            {"VertexInsertedInFull",
             [](EditedText& t) { t.Copy("NumVertices", kVertex, 20, 4).Set(kVertex, 4, "U0", "7.0"); },
             {"+ MeshData.Vertex[4]"},
             {.m_IsFull = true}},
            {"TriangleChangedAndRemoved",
             [](EditedText& t) { t.Set(kTriangle, 10, "iVertex1", "3").Remove("NumTriangles", kTriangle, 2); },
             {"MeshData.Triangle: 1 of 12 differ, iVertex1 by at most 19 at Triangle[9]",
              "- MeshData.Triangle: 1 of 12, first at Triangle[2]"}},
            {"DerivedLists", [](EditedText& t) { t.Set(kIndex, 5, "Index", "23"); }, {}},
            {"DerivedListsToo",
             [](EditedText& t) { t.Set(kIndex, 5, "Index", "23"); },
             {"MeshData.NumCachedVertexIndicesInDirection:DOWN: 1 of 4 differ, by at most 18 at "
              "NumCachedVertexIndicesInDirection:DOWN[1]"},
             {.m_IsWithDerived = true}},
            {"DerivedListsInFull",
             [](EditedText& t) {
                 t.Set(kIndex, 5, "Index", "23").Remove("NumCachedVertexIndicesInDirection:BACK", kIndex, 23);
             },
             {"MeshData.NumCachedVertexIndicesInDirection:DOWN[1]: 5 -> 23",
              "- MeshData.NumCachedVertexIndicesInDirection:BACK[3] 23"},
             {.m_IsFull = true, .m_IsWithDerived = true}},
        });
}

TEST_F(TreeComparisonTest, SmallEditsOfAnEffect) {
    Run(Kind::Particle, ReadExample("Particle/ReactorBlast.particle"),
        {
            {"EmitterInserted",
             [](EditedText& t) { t.Copy("NumEmitters", kEmitter, 0, 1).Set(kEmitter, 1, "Name", "\"Smoke\""); },
             {"+ ParticleSimulation.EmitterContents[1] \"Smoke\""}},
            {"EmitterRemoved",
             [](EditedText& t) { t.Remove("NumEmitters", kEmitter, 1); },
             {"- ParticleSimulation.EmitterContents[1] \"Fireball\""}},
            {"EmitterMoved",
             [](EditedText& t) { t.Move(kEmitter, 2, 0); },
             {"ParticleSimulation.EmitterContents[2] -> ParticleSimulation.EmitterContents[0] moved"}},
            {"AffectorMoved",
             [](EditedText& t) { t.Move(kAffector, 1, 4); },
             {"ParticleSimulation.AffectorContents[1] -> ParticleSimulation.AffectorContents[4] moved"}},
            {"AffectorRenamed",
             [](EditedText& t) { t.Set(kAffector, 1, "Name", "\"Glow\""); },
             {"ParticleSimulation.AffectorContents[1].Name: \"Flicker\" -> \"Glow\""}},
            {"AttachedNameRemoved",
             [](EditedText& t) { t.Remove("numAttachedEmitters", {"attachedEmitterName"}, 1); },
             {"- ParticleSimulation.AffectorContents[0].attachedEmitterName[1] \"Fireball\""}},
            {"Slot",
             [](EditedText& t) { t.Set({"textureName"}, 1, "textureName", "\"Glow.dds\""); },
             {"ParticleSimulation.EmitterContents[0].textureName[1]: \"\" -> \"Glow.dds\""}},
            {"Matrix",
             [](EditedText& t) { t.Replace(kEmitter, 0, "[ 1.0", "[ 0.5"); },
             {"ParticleSimulation.EmitterContents[0].Orientation: [ 1.0 0.0 0.0 ] [ 0.0 1.0 0.0 ] [ 0.0 0.0 1.0 ] -> "
              "[ 0.5 0.0 0.0 ] [ 0.0 1.0 0.0 ] [ 0.0 0.0 1.0 ]"}},
        });
}

TEST_F(TreeComparisonTest, SmallEditsOfBrushes) {
    Run(Kind::Brushes, ReadExample("Brushes/ConsolePanels.brushes"),
        {
            {"BrushInserted",
             [](EditedText& t) { t.Copy("brushCount", kBrush, 2, 3).Set(kBrush, 3, "name", "\"Other\""); },
             {"+ brush[3] \"Other\""}},
            {"BrushMoved", [](EditedText& t) { t.Move(kBrush, 4, 1); }, {"brush[4] -> brush[1] moved"}},
            {"Nested",
             [](EditedText& t) { t.Set(kBrush, 3, "top", "-5").Set(kBrush, 2, "pixelBox", "[ 0 , 96 , 128 , 33 ]"); },
             {"brush[2].Disabled.pixelBox: [ 0 , 96 , 128 , 32 ] -> [ 0 , 96 , 128 , 33 ]",
              "brush[3].stretchMargins.top: 4 -> -5"}},
            {"ContentChanged",
             [](EditedText& t) {
                 t.Set(kBrush, 1, "content", "\"Simple\"");
                 for (const char* margins : {"stretchMargins", "contentMargins"})
                     t.Cut({margins}, 0);
             },
             {"brush[1].content: \"Margins\" -> \"Simple\"", "- brush[1].stretchMargins", "- brush[1].contentMargins"}},
        });
}

} // namespace
} // namespace Corvid
