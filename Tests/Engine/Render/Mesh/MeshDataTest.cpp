#include "Engine/Render/Mesh/MeshData.h"

#include <cfloat>
#include <random>
#include <string>

#include "Tests/Engine/File/TemporaryFolder.h"
#include "Tests/Support/ArchiveFixture.h"
#include "Tests/Support/SpelledFile.h"

namespace Corvid {
namespace {

constexpr const char* kDirections[] = {"UP", "DOWN", "LEFT", "RIGHT", "FRONT", "BACK"};

void SpellVertex(SpelledFile& file, const std::array<float, 3>& position, const std::array<float, 3>& normal) {
    file.Begin("Vertex").Vector("Position", position).Vector("Normal", normal).Vector("Tangent", {0.25f, 0.5f, 0.75f});
    file.Color("Color", "0", {0, 0, 0, 0});
    file.Float("U0", 0.125f).Float("V0", 0.375f).Float("U1", 0.625f).Float("V1", 0.875f).End();
}

SpelledFile SpellMesh() {
    SpelledFile file;
    file.Begin("MeshData").Int("maxDiffuseMipLevel", -3).Bool("hasValidTangents", true).Float("BoundingRadius", 2.0f);
    file.Vector("MaxBoundingExtents", {1, 0, 1.5f}).Vector("MinBoundingExtents", {0, -4, -1});
    file.Int("NumMaterials", 1).Begin("Material");
    file.String("DiffuseTextureFileName", "a.dds").String("SelfIlluminationTextureFileName", "b.dds");
    file.String("NormalTextureFileName", "c.dds").String("DisplacementTextureFileName", "d.dds");
    file.String("TeamColorTextureFileName", "Textures\\TeamLogo.dds");
    file.Color("Diffuse", "ff102030", {16, 32, 48, 255}).Color("Ambient", "1020304", {2, 3, 4, 1});
    file.Color("Specular", "80ffffff", {255, 255, 255, 128}).Color("Emissive", "ff", {0, 0, 255, 0});
    file.Float("Glossiness", 12.5f).End();
    file.Int("NumPoints", 1).Begin("Point").String("DataString", "Bow").Vector("Position", {1, 2, 3});
    file.Matrix("Orientation", {{{1, 2, 3}, {4, 5, 6}, {7, 8, 9}}}).End();
    file.Int("NumVertices", 3);
    SpellVertex(file, {0, 0, 0}, {0, 1, 0});
    SpellVertex(file, {0, 0, 1.5f}, {0, 1, 0});
    SpellVertex(file, {1, 0, -1}, {0, 0, -1});
    file.Int("NumTriangles", 1).Begin("Triangle").Int("iVertex0", 0).Int("iVertex1", 1);
    file.Int("iVertex2", 99).Int("iMaterial", -1).End(); // nobody checks these
    for (const std::string direction : kDirections) {
        const std::vector<int> list = direction == "UP"     ? std::vector{1, 0}
                                      : direction == "BACK" ? std::vector{2}
                                                            : std::vector<int>{};
        file.Int(("NumCachedVertexIndicesInDirection:" + direction).c_str(), static_cast<std::int32_t>(list.size()));
        for (const int index : list)
            file.Int("Index", index);
    }
    return file;
}

std::string Replaced(std::string text, std::string_view from, std::string_view to) {
    EXPECT_NE(text.find(from), text.npos) << from;
    return text.replace(text.find(from), from.size(), to);
}

class MeshDataTest : public ArchiveFixture {
protected:
    void Read(std::string bytes, MeshData& mesh) {
        LoadWith(std::move(bytes), [&](FileArchive& archive) { archive.ReadLabeledObject(u"MeshData", mesh); });
    }
    std::string Convert(std::string bytes, ArchiveFormat format) {
        MeshData mesh;
        Read(std::move(bytes), mesh);
        return SaveWith(format, [&](FileArchive& archive) { archive.WriteLabeledObject(u"MeshData", mesh); });
    }
};

TEST_F(MeshDataTest, RecordIsPinnedInBothEncodings) {
    const SpelledFile file = SpellMesh();
    for (const std::string& source : {file.GetText(), file.GetBinary()}) {
        EXPECT_EQ(Convert(source, ArchiveFormat::Text), file.GetText());
        EXPECT_EQ(Convert(source, ArchiveFormat::Binary), file.GetBinary());
    }
    EXPECT_EQ(m_Reports.Take(), "");
}

TEST_F(MeshDataTest, ColoursAndListsOfTheSourceAreNotWritten) {
    const std::string saved = SpellMesh().GetText();
    std::string source = Replaced(saved, "Color 0", "Color ff00ff80");
    source = Replaced(source, ":UP 2\r\n\tIndex 1\r\n\tIndex 0", ":UP 0");
    source = Replaced(source, ":DOWN 0", ":DOWN 2\r\n\tIndex 7\r\n\tIndex -7");
    MeshData mesh;
    Read(source, mesh);
    EXPECT_EQ(mesh.GetCachedVertexIndices()[0].GetSize(), 0); // as stored until it is saved
    ASSERT_EQ(mesh.GetCachedVertexIndices()[1].GetSize(), 2);
    EXPECT_EQ(mesh.GetCachedVertexIndices()[1][1], -7);
    EXPECT_EQ(Convert(source, ArchiveFormat::Text), saved);
    EXPECT_EQ(m_Reports.Take(), "");
}

TEST_F(MeshDataTest, LoadingDerivesTheBoxAndNothingElse) {
    MeshData mesh;
    Read(SpellMesh().GetBinary(), mesh);
    EXPECT_EQ(mesh.m_BoxSize, (Vector3{1, 4, 2.5f}));
    EXPECT_EQ(mesh.m_BoxCentre, (Vector3{0.5f, -2, 0.25f}));
    EXPECT_EQ(mesh.m_BoxHalfExtents, (Vector3{0.5f, 2, 1.25f}));
    EXPECT_EQ(mesh.m_BoxOrientation, Matrix33());
    EXPECT_EQ(mesh.m_BoundingRadius, 2.0f);
    EXPECT_EQ(mesh.m_RootPoint.m_Position, Vector3{});
    EXPECT_EQ(mesh.m_RootPoint.m_Orientation, Matrix33::Identity());
}

TEST_F(MeshDataTest, TeamLogoIsTheExactFilePart) {
    const auto showsLogo = [this](const std::string& path) {
        MeshData mesh;
        Read(Replaced(SpellMesh().GetText(), "Textures\\TeamLogo.dds", path), mesh);
        return mesh.m_Materials[0].ShowsTeamLogo();
    };
    for (const char* path : {"TeamLogo", "Textures\\TeamLogo.dds", "a/b.c\\d/TeamLogo.tga", "C:TeamLogo."})
        EXPECT_TRUE(showsLogo(path)) << path;
    for (const char* path : {"teamlogo.dds", "TeamLogo2.dds", "TeamLogo/", "TeamLogo\\x.dds", "TeamLogo.old.dds",
                             " TeamLogo.x", "", ".TeamLogo"})
        EXPECT_FALSE(showsLogo(path)) << path;
    MeshMaterial material;
    LoadText("TeamColorTextureFileName \"TeamLogo.dds\"\n", material);
    LoadText("TeamColorTextureFileName \"x.dds\"\n", material);
    EXPECT_TRUE(material.ShowsTeamLogo()); // it is never cleared by loading
}

TEST_F(MeshDataTest, MissingFieldsKeepDefaults) {
    MeshData mesh;
    Read("TXT\n", mesh);
    EXPECT_EQ(m_Reports.GetTexts().size(), 1u); // the record alone
    EXPECT_EQ(mesh.m_BoxSize, Vector3{});
    Read("TXT\nMeshData\n", mesh);
    EXPECT_EQ(m_Reports.Count("missing Label"), 1 + 15);
    EXPECT_EQ(m_Reports.Count("newMaxSize >= 0"), 6);
    EXPECT_EQ(m_Reports.GetTexts().size(), 1u + 15 + 6);
    EXPECT_EQ(mesh.m_MaxDiffuseMipLevel, 0);
    EXPECT_FALSE(mesh.m_HasValidTangents);
    EXPECT_EQ(mesh.m_BoundingRadius, -1.0f);
    EXPECT_EQ(mesh.m_MaxBoundingExtents, (Vector3{-FLT_MAX, -FLT_MAX, -FLT_MAX}));
    EXPECT_EQ(mesh.m_MinBoundingExtents, (Vector3{FLT_MAX, FLT_MAX, FLT_MAX}));
    EXPECT_EQ(mesh.m_BoxCentre, Vector3{});
}

TEST_F(MeshDataTest, MissingElementIsADefaultOne) {
    const std::string source = Replaced(SpellMesh().GetText(), "NumMaterials 1", "NumMaterials 2");
    MeshData mesh;
    Read(Replaced(source, "NumVertices 3", "NumVertices 4"), mesh);
    EXPECT_EQ(m_Reports.Count("missing Label"), 2);
    EXPECT_EQ(m_Reports.GetTexts().size(), 2u);
    EXPECT_TRUE(mesh.m_Materials[1].m_DiffuseTextureFileName.IsEmpty());
    EXPECT_EQ(mesh.m_Materials[1].m_Diffuse, Color{});
    EXPECT_EQ(mesh.m_Vertices[3].m_Normal, Vector3{});
}

TEST_F(MeshDataTest, CountsThatAreNotPositiveYieldNothing) {
    struct Case {
        std::string label;
        bool isCapacity;
    };
    std::vector<Case> cases = {
        {"NumMaterials", false}, {"NumPoints", false}, {"NumVertices", false}, {"NumTriangles", false}};
    for (const char* direction : kDirections)
        cases.push_back({std::string("NumCachedVertexIndicesInDirection:") + direction, true});
    std::string empty = "TXT\nMeshData\nmaxDiffuseMipLevel 1\nhasValidTangents TRUE\nBoundingRadius 1\n"
                        "MaxBoundingExtents [ 1 1 1 ]\nMinBoundingExtents [ 0 0 0 ]\n";
    for (const Case& row : cases)
        empty += row.label + " 0\n";
    for (const Case& row : cases) {
        for (const char* count : {" 0\n", " -1\n", " -2147483648\n", ""}) {
            MeshData mesh;
            Read(SpellMesh().GetText(), mesh); // gives way
            m_Reports.Take();
            Read(Replaced(empty, row.label + " 0\n", *count != 0 ? row.label + count : ""), mesh);
            const int missing = *count == 0;
            const int negative = row.isCapacity && std::string_view(count) != " 0\n";
            EXPECT_EQ(m_Reports.Count("missing Label"), missing) << row.label << count;
            EXPECT_EQ(m_Reports.Count("newMaxSize >= 0"), negative) << row.label << count;
            EXPECT_EQ(static_cast<int>(m_Reports.GetTexts().size()), missing + negative) << row.label << count;
            EXPECT_EQ(mesh.m_Materials.GetSize() + mesh.m_Points.GetSize() + mesh.m_Vertices.GetSize() +
                          mesh.m_Triangles.GetSize() + mesh.GetCachedVertexIndices()[0].GetSize(),
                      0);
        }
    }
}

TEST_F(MeshDataTest, ConversionsSettleAfterTheSecondPass) {
    std::mt19937 random(24);
    std::string bytes = "BIN\n";
    const auto add = [&](std::uint32_t value) { bytes.append(reinterpret_cast<const char*>(&value), 4); };
    const auto addFloats = [&](int count) {
        for (; count > 0; --count) // any float at all now and then, else one of a usual size
            add(random() % 8 == 0 ? std::uint32_t(random()) : std::bit_cast<std::uint32_t>(float(random()) * 1e-9f));
    };
    add(0);
    bytes += '\1';
    addFloats(7);
    for (int i = 0; i < 2; ++i) // no materials, no points
        add(0);
    add(600);
    addFloats(600 * 17);
    for (int i = 0; i < 7; ++i) // no triangles, no lists
        add(0);
    const std::string first = Convert(Convert(bytes, ArchiveFormat::Text), ArchiveFormat::Binary);
    const std::string text = Convert(first, ArchiveFormat::Text);
    EXPECT_EQ(Convert(text, ArchiveFormat::Binary), first);
    EXPECT_EQ(Convert(first, ArchiveFormat::Text), text);
    EXPECT_EQ(Convert(text, ArchiveFormat::Text), text);
    EXPECT_EQ(m_Reports.Take(), "");
}

TEST_F(MeshDataTest, FilesLoadWithNameFlagAndChecksum) {
    const TemporaryFolder folder;
    const SpelledFile file = SpellMesh();
    folder.Put("text", file.GetText());
    folder.Put("binary", file.GetBinary());
    folder.Put("other", Replaced(file.GetText(), "iVertex2 99", "iVertex2 98"));
    MeshData text, binary, other;
    EXPECT_EQ(text.m_IsLoaded, 0u);
    EXPECT_EQ(text.LoadFromFile(m_Archives, folder / "text"), LoadResult::Loaded);
    EXPECT_EQ(binary.LoadFromFile(m_Archives, folder / "binary"), LoadResult::Loaded);
    EXPECT_EQ(other.LoadFromFile(m_Archives, folder / "other"), LoadResult::Loaded);
    EXPECT_EQ(text.m_IsLoaded, 1u);
    EXPECT_EQ(text.m_FileName, folder / "text");
    EXPECT_NE(text.m_Checksum, 0u);
    EXPECT_EQ(text.m_Checksum, binary.m_Checksum);
    EXPECT_NE(text.m_Checksum, other.m_Checksum);
    EXPECT_EQ(text.LoadFromFile(m_Archives, text.m_FileName.GetView()),
              LoadResult::Loaded); // its own name is no other string
    EXPECT_EQ(m_Reports.Take(), "");

    EXPECT_EQ(other.LoadFromFile(m_Archives, folder / "none"), LoadResult::NotOpened);
    EXPECT_EQ(other.m_IsLoaded, 1u); // from the begin of the attempt
    EXPECT_EQ(text.SaveToFile(m_Archives, ArchiveFormat::Text, folder / "none/x"), SaveResult::NotOpened);
    EXPECT_EQ(text.SaveToFile(m_Archives, ArchiveFormat::Steam, folder / "y"), SaveResult::Saved); // needs no file
    EXPECT_EQ(folder.List(), (std::set<std::string>{"binary", "other", "text"}));
}

} // namespace
} // namespace Corvid
