#include "Engine/Render/Mesh/MeshSystem.h"

#include <gtest/gtest.h>

#include <string>

#include "Engine/String/Unicode.h"
#include "Tests/Support/ReportLog.h"
#include "Tests/Support/WorkingFolder.h"

namespace Corvid {
namespace {

// Meshes differ in their mip level.
class MeshSystemTest : public ::testing::Test {
protected:
    void Put(const std::string& file, int mipLevel) {
        const std::int32_t values[] = {mipLevel, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0};
        std::string bytes(reinterpret_cast<const char*>(values), sizeof values);
        m_Folder.Put(file, "BIN\n" + bytes.insert(4, 1, '\0'));
    }
    MeshReference Load(std::u16string_view path) { return m_Meshes.Load(path, MeshLoadParameters()); }

    WorkingFolder m_Folder;
    ReportLog m_Reports;
    FileArchiveSystem m_Archives;
    MeshSystem m_Meshes{m_Archives};
};

TEST_F(MeshSystemTest, PathsAreTakenAsTheyStandOrSearchedFor) {
    struct Case {
        const char16_t* subFolder;
        const char16_t* path;
        int mipLevel; // 0: none is found
        const char* reports;
    };
    const Case kCases[] = {
        {u"", u"ship.mesh", 1, ""},
        {u"", u"./ship.mesh", 1, ""},
        {u"", u"models/ship.mesh", 2, ""},
        {u"", u"noextension", 3, ""},
        {u"", u"ship", 1, "The mesh 'ship' is loaded from the file 'ship.mesh'.\n"},
        {u"", u"gone/ship.fbx", 1, "The mesh 'gone/ship.fbx' is loaded from the file 'ship.mesh'.\n"},
        {u"", u"C:\\a\\ship.x", 1, "The mesh 'C:\\a\\ship.x' is loaded from the file 'ship.mesh'.\n"},
        {u"", u"parts", 4, "The mesh 'parts' is loaded from the file 'parts.mesh'.\n"}, // a folder
        {u"", u"models", 0, "Failed to find data file 'models.mesh'. (SubPath = )\nCould not find Mesh: models\n"},
        {u"", u"x/none.x", 0, "Failed to find data file 'none.mesh'. (SubPath = )\nCould not find Mesh: x/none.x\n"},
        {u"", u"odd.x", 0, "Failed to find data file 'odd.mesh'. (SubPath = )\nCould not find Mesh: odd.x\n"},
        {u"", u"", 0, "Failed to find data file '.mesh'. (SubPath = )\nCould not find Mesh: \n"},
        {u"models", u"models/ship.mesh", 2, ""},
        {u"models", u"ship.mesh", 2, "The mesh 'ship.mesh' is loaded from the file 'models/ship.mesh'.\n"},
        {u"", u"gone/goal.mesh", 0,
         "Failed to find data file 'goal.mesh'. (SubPath = )\nCould not find Mesh: gone/goal.mesh\n"}, // destination
        {u"", u"goal.mesh", 5, ""},
        {u"models", u"parts.mesh", 0,
         "Failed to find data file 'parts.mesh'. (SubPath = models)\nCould not find Mesh: parts.mesh\n"},
    };
    for (const char* folder : {"models", "parts", "odd.mesh"})
        std::filesystem::create_directory(folder);
    Put("ship.mesh", 1);
    Put("models/ship.mesh", 2);
    Put("noextension", 3);
    Put("parts.mesh", 4);
    Put("goal.mesh", 5);
    m_Meshes.GetSettings().m_Destination = u"models/../goal.mesh";
    for (const Case& row : kCases) {
        m_Meshes.GetSettings().m_SubFolder = row.subFolder;
        const MeshReference mesh = Load(row.path);
        EXPECT_EQ(mesh.Get() != nullptr ? mesh.Get()->m_Data.m_MaxDiffuseMipLevel : 0, row.mipLevel)
            << ToUtf8(row.path);
        EXPECT_EQ(m_Reports.Take(), row.reports);
    }
}

TEST_F(MeshSystemTest, EachFileIsLoadedOnceAndCounted) {
    Put("a.mesh", 1);
    MeshLoadParameters parameters;
    EXPECT_FALSE(parameters.m_Flags[0] || parameters.m_Flags[1]);
    EXPECT_EQ(parameters.m_Identifiers[2], -1);
    parameters.m_Identifiers[0] = 7;
    MeshReference first = m_Meshes.Load(u"a.mesh", parameters);
    ASSERT_NE(first.Get(), nullptr);
    Mesh& mesh = *first.Get();
    EXPECT_EQ(mesh.m_LoadParameters.m_Identifiers[0], 7);
    EXPECT_EQ(mesh.m_Data.m_FileName, u"a.mesh");
    EXPECT_EQ(mesh.m_ReferenceCount, 1);
    EXPECT_FALSE(mesh.m_IsStandalone);
    const auto loadTime = m_Meshes.GetTotalLoadTime();
    EXPECT_GT(loadTime.count(), 0);

    Put("a.mesh", 2);
    MeshReference second = Load(u"a.mesh");
    EXPECT_EQ(second.Get(), &mesh);
    EXPECT_EQ(mesh.m_Data.m_MaxDiffuseMipLevel, 1);
    EXPECT_EQ(mesh.m_ReferenceCount, 2);
    EXPECT_EQ(m_Meshes.GetTotalLoadTime(), loadTime);
    first = std::move(second);
    EXPECT_EQ(mesh.m_ReferenceCount, 1);
    first.Release();
    first.Release();
    EXPECT_EQ(mesh.m_ReferenceCount, 0);
    EXPECT_EQ(m_Meshes.GetMeshCount(), 1); // until the system shuts down
    m_Meshes.ShutDown();
    EXPECT_EQ(m_Meshes.GetMeshCount(), 0);
    EXPECT_EQ(Load(u"a.mesh").Get()->m_Data.m_MaxDiffuseMipLevel, 2);
    EXPECT_EQ(m_Reports.Take(), "");
}

TEST_F(MeshSystemTest, FileInNeitherEncodingIsTriedOnce) {
    m_Folder.Put("a.mesh", "mesh");
    EXPECT_NE(Load(u"a.mesh").Get(), nullptr);
    EXPECT_NE(Load(u"a.mesh").Get(), nullptr);
    EXPECT_EQ(m_Reports.Take(), "Could not detect if Archive File is Binary or Text: a.mesh");
}

TEST_F(MeshSystemTest, LoadingCanBeSwitchedOff) {
    Put("a.mesh", 1);
    m_Meshes.GetSettings().m_IsLoadingEnabled = false;
    const MeshReference mesh = Load(u"a.mesh");
    EXPECT_EQ(mesh.Get()->m_Data.m_FileName, u"a.mesh");
    EXPECT_EQ(mesh.Get()->m_Data.m_IsLoaded, 0u);
    EXPECT_EQ(m_Meshes.GetTotalLoadTime().count(), 0);
    m_Meshes.GetSettings().m_IsLoadingEnabled = true;
    EXPECT_EQ(Load(u"a.mesh").Get(), mesh.Get());
    EXPECT_EQ(mesh.Get()->m_Data.m_MaxDiffuseMipLevel, 1);
}

TEST_F(MeshSystemTest, ListHolds800Meshes) {
    const auto load = [this](int i) {
        const std::string name = std::to_string(i);
        Put(name, i);
        return Load(ToUtf16(name));
    };
    for (int i = 0; i < 800; ++i)
        ASSERT_NE(load(i).Get(), nullptr);
    EXPECT_EQ(m_Reports.Take(), "");
    EXPECT_EQ(load(800).Get(), nullptr);
    EXPECT_EQ(m_Reports.Count("m_CurrentSize < MAX_SIZE"), 1);
    EXPECT_EQ(m_Reports.GetTexts().size(), 1u);
    EXPECT_EQ(load(799).Get()->m_Data.m_MaxDiffuseMipLevel, 799);
    EXPECT_EQ(m_Meshes.GetMeshCount(), 800);
}

TEST_F(MeshSystemTest, MockMeshesAreMadeUp) {
    MeshSystem::Settings& settings = m_Meshes.GetSettings();
    settings.m_IsMockMode = true;
    settings.m_MockRadius = 12.5f;
    for (const char16_t* name : {u"Bow", u"Stern", u"", u"3", u"4", u"5", u"6", u"7", u"8", u"Last"})
        settings.m_MockPointNames.Append() = name;
    MeshLoadParameters parameters;
    parameters.m_Flags[1] = true;
    parameters.m_Identifiers[2] = 9;
    MeshReference first = m_Meshes.Load(u"none.mesh", parameters);
    EXPECT_TRUE(first.Get()->m_LoadParameters.m_Flags[1]);
    EXPECT_EQ(first.Get()->m_LoadParameters.m_Identifiers[2], 9);
    const MeshReference second = Load(u"none.mesh");
    EXPECT_NE(first.Get(), second.Get());
    EXPECT_TRUE(first.Get()->m_IsStandalone);
    EXPECT_EQ(first.Get()->m_Data.m_FileName, u"none.mesh");
    EXPECT_EQ(first.Get()->m_Data.m_BoundingRadius, 12.5f);
    ASSERT_EQ(first.Get()->m_Data.m_Points.GetSize(), 10);
    EXPECT_EQ(first.Get()->m_Data.m_Points[9].m_DataString, u"Last");
    const MeshPoint& point = first.Get()->m_Data.m_Points[1];
    EXPECT_EQ(point.m_DataString, u"Stern");
    EXPECT_EQ(point.m_Position, Vector3{});
    EXPECT_EQ(point.m_Orientation, Matrix33::Identity());
    EXPECT_EQ(m_Meshes.GetMeshCount(), 0);
    m_Meshes.ShutDown();
    EXPECT_EQ(second.Get()->m_Data.m_FileName, u"none.mesh"); // its user's
    first.Release();
    EXPECT_EQ(first.Get(), nullptr);
    EXPECT_EQ(m_Reports.Take(), "");
    settings.m_MockPointNames.Append();
    EXPECT_EQ(m_Reports.Count("m_CurrentSize < MAX_SIZE"), 1);
}

TEST_F(MeshSystemTest, MeshInUseOutlivesTheShutDown) {
    Put("a.mesh", 1);
    MeshReference mesh = Load(u"a.mesh");
    m_Meshes.ShutDown();
    EXPECT_EQ(mesh.Get()->m_Data.m_MaxDiffuseMipLevel, 1);
    EXPECT_EQ(Load(u"a.mesh").Get()->m_ReferenceCount, 1); // another one
    mesh.Release();
    EXPECT_EQ(m_Reports.Take(), "");
}

TEST_F(MeshSystemTest, LongPathsAreOpenedWholeAndRecordedCut) {
    struct Case {
        std::size_t dots;
        std::string file;
        int mipLevel;
        int reports;
    };
    const Case kCases[] = {{127, "a", 1, 0}, {127, "ab", 2, 1}, {300, "a", 1, 1}, {300, "b", 3, 1}};
    Put("a", 1);
    Put("ab", 2);
    Put("b", 3);
    for (const bool isLoadingEnabled : {false, true}) {
        m_Meshes.GetSettings().m_IsLoadingEnabled = isLoadingEnabled;
        for (const Case& row : kCases) {
            std::string path;
            for (std::size_t i = 0; i < row.dots; ++i)
                path += "./";
            path += row.file;
            const MeshReference mesh = Load(ToUtf16(path));
            EXPECT_EQ(mesh.Get()->m_Data.m_MaxDiffuseMipLevel, isLoadingEnabled ? row.mipLevel : 0) << path;
            EXPECT_EQ(mesh.Get()->m_Data.m_FileName, ToUtf16(path.substr(0, 255)));
            EXPECT_EQ(m_Reports.Count("GetLength( source ) < destination.m_BufferSize"), row.reports) << path;
            EXPECT_EQ(static_cast<int>(m_Reports.GetTexts().size()), row.reports) << path;
            m_Reports.Take();
        }
    }
    EXPECT_EQ(m_Meshes.GetMeshCount(), 4);
}

} // namespace
} // namespace Corvid
