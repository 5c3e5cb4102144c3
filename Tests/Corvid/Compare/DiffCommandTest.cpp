#include "Corvid/Commands/Diff.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "Tests/Corvid/Compare/CompareFixture.h"
#include "Tests/Support/CorvidRun.h"
#include "Tests/Support/WorkingFolder.h"

namespace Corvid {
namespace {

// Saves what is in memory; names say what stands in them.
class DiffCommandTest : public CompareFixture {
protected:
    static constexpr const char* kDebris = "TXT\nentityType \"Debris\"\naverageLifetime 45.000000\n"
                                           "lifetimeVariancePerc 0.250000\nminLinearSpeed 20.000000\n"
                                           "maxLinearSpeed 180.000000\nminAngularSpeed 0.125000\n"
                                           "maxAngularSpeed 1.500000\ndragRate 0.062500\nminShadow 0.200000\n"
                                           "maxShadow 0.800000\n";

    static std::string Edited(std::string text, std::string_view from, std::string_view to) {
        return text.replace(text.find(from), from.size(), to);
    }

    // The binary twin, with every float as it is.
    std::string Binary(Kind kind, const std::string& text) {
        const auto object = CreateKindObject(kind, u"memory");
        LoadWith(text, [&](FileArchive& archive) { object->Load(archive); });
        return SaveWith(ArchiveFormat::Binary, [&](FileArchive& archive) { object->Save(archive); });
    }

    void SetUp() override {
        WriteFile("a.entity", kDebris);
        WriteFile("b.entity", Edited(kDebris, "45.0", "46.5"));
        WriteFile("damaged.entity", Edited(kDebris, "dragRate", "dragRat"));
        WriteFile("cube.mesh", ReadExample("Mesh/cube.mesh"));
    }

    WorkingFolder m_Folder;
};

TEST_F(DiffCommandTest, TwoFiles) {
    WriteFile("a-binary.entity", Binary(Kind::Entity, kDebris));
    WriteFile("garbage.entity", "no archive at all");
    std::filesystem::create_directory("folder");
    struct Case {
        std::vector<std::string> arguments;
        int status;
        std::string output;
        std::string error; // a part of it; "" when there is none
    };
    const Case kCases[] = {
        {{"a.entity", "a.entity"}, 0, "", ""},
        {{"a.entity", "a-binary.entity"}, 0, "", ""},
        {{"a.entity", "b.entity"}, 1, "averageLifetime: 45.0 -> 46.5\n", ""},
        {{"-q", "a.entity", "b.entity"}, 1, "", ""},
        {{"--tolerance", "1.5", "a.entity", "b.entity"}, 0, "", ""},
        {{"--tolerance", "1.4", "-q", "a.entity", "b.entity"}, 1, "", ""},
        {{"--ulp=1000000", "a.entity", "b.entity"}, 0, "", ""},
        {{"--format", "json", "a.entity", "b.entity"},
         1,
         "{\"file\":\"b.entity\",\"change\":\"changed\",\"field\":\"averageLifetime\",\"from\":45.0,\"to\":46.5}\n",
         ""},
        {{"--color=always", "a.entity", "b.entity"}, 1, "averageLifetime: 45.0 -> 46.5\n", ""},
        // What can be read is compared, and the same on both sides is still no success.
        {{"damaged.entity", "b.entity"}, 1, "averageLifetime: 45.0 -> 46.5\n", "damaged.entity:9:1: error: dragRate"},
        {{"damaged.entity", "damaged.entity"}, 1, "", "[missing-field]"},
        {{"cube.mesh", "a.entity"}, 2, "", "of the kinds mesh and entity"},
        {{"garbage.entity", "a.entity"}, 2, "", "[not-an-archive]"},
        {{"gone.entity", "a.entity"}, 2, "", "[cannot-read]"},
        {{"folder", "a.entity"}, 2, "", "folder is a folder, and a.entity is none"},
        {{"folder", "gone.entity"}, 2, "", "gone.entity: error: "},
        {{"a.entity"}, 2, "", "two paths"},
        {{"a.entity", "b.entity", "a.entity"}, 2, "", "two paths"},
        {{"-", "-"}, 2, "", "only once"},
        {{"--tolerance", "-1", "a.entity", "b.entity"}, 2, "", "'-1'"},
        {{"--tolerance", "nan", "a.entity", "b.entity"}, 2, "", "'nan'"},
    };
    for (const Case& c : kCases) {
        std::vector<std::string> arguments = {"diff"};
        arguments.insert(arguments.end(), c.arguments.begin(), c.arguments.end());
        SCOPED_TRACE(testing::PrintToString(arguments));
        const CorvidRun run(arguments);
        EXPECT_EQ(run.m_Status, c.status);
        EXPECT_EQ(run.m_Output, c.output);
        EXPECT_EQ(run.m_Errors.empty(), c.error.empty()) << run.m_Errors;
        EXPECT_NE(run.m_Errors.find(c.error), std::string::npos) << run.m_Errors;
    }
}

TEST_F(DiffCommandTest, ColoursHaveEightBitsWhereOneSideIsText) {
    const std::string text = ReadExample("Mesh/cube.mesh");
    MeshObject mesh;
    LoadWith(text, [&](FileArchive& archive) { mesh.Load(archive); });
    const auto save = [&] {
        return SaveWith(ArchiveFormat::Binary, [&](FileArchive& archive) { mesh.Save(archive); });
    };
    WriteFile("first.mesh", save());
    mesh.m_Data.m_Materials[0].m_Ambient.red += 0.0001f;
    WriteFile("second.mesh", save());
    EXPECT_EQ(CorvidRun({"diff", "cube.mesh", "second.mesh"}).m_Status, 0);
    const CorvidRun run({"diff", "first.mesh", "second.mesh"});
    EXPECT_EQ(run.m_Status, 1);
    EXPECT_EQ(run.m_Output.find("MeshData.Material[0].Ambient: [ 0.2509804 "), 0U) << run.m_Output;
}

TEST_F(DiffCommandTest, Summaries) {
    std::string text = ReadExample("Mesh/cube.mesh");
    WriteFile("other.mesh", EditedText(text).Set({"Vertex"}, 17, "U0", "0.25").Get());
    EXPECT_EQ(CorvidRun({"diff", "--format=json", "cube.mesh", "other.mesh"}).m_Output,
              "{\"file\":\"other.mesh\",\"change\":\"changed\",\"field\":\"MeshData.Vertex\",\"count\":1,\"of\":24,"
              "\"largest\":0.75,\"at\":\"Vertex[17].U0\"}\n");
}

TEST_F(DiffCommandTest, TwoFolders) {
    std::filesystem::create_directories("one/sub");
    std::filesystem::create_directories("two/sub");
    WriteFile("one/same.entity", kDebris);
    WriteFile("two/same.entity", Binary(Kind::Entity, kDebris));
    WriteFile("one/sub/case.ENTITY", kDebris);
    WriteFile("two/sub/case.entity", Edited(kDebris, "45.0", "46.5"));
    WriteFile("one/old.entity", kDebris);
    WriteFile("two/new.entity", kDebris);
    WriteFile("two/notes.txt", "not looked at");
    const std::string expected = "+ new.entity\n- old.entity\nsub/case.entity: averageLifetime: 45.0 -> 46.5\n";
    for (const char* jobs : {"-j1", "-j3"}) {
        const CorvidRun run({"diff", jobs, "one", "two"});
        EXPECT_EQ(run.m_Status, 1);
        EXPECT_EQ(run.m_Output, expected);
        EXPECT_EQ(run.m_Errors, "");
    }
    EXPECT_EQ(CorvidRun({"diff", "--format=json", "one", "two"}).m_Output,
              "{\"file\":\"new.entity\",\"change\":\"added\"}\n{\"file\":\"old.entity\",\"change\":\"removed\"}\n"
              "{\"file\":\"sub/case.entity\",\"change\":\"changed\",\"field\":\"averageLifetime\",\"from\":45.0,\"to\":"
              "46.5}\n");
    EXPECT_EQ(CorvidRun({"diff", "one", "one/"}).m_Status, 0);

    // One bad file does not stop the others.
    WriteFile("two/same.entity", "BIN");
    const CorvidRun bad({"diff", "one", "two"});
    EXPECT_EQ(bad.m_Status, 1);
    EXPECT_EQ(bad.m_Output, expected);
    EXPECT_NE(bad.m_Errors.find("two/same.entity"), std::string::npos) << bad.m_Errors;
}

TEST_F(DiffCommandTest, CalledByGit) {
    WriteFile("blob1", kDebris); // git's temporary files need not keep the name
    WriteFile("blob2", Edited(kDebris, "45.0", "46.5"));
    const auto run = [](std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), "diff");
        const CorvidRun result(arguments);
        EXPECT_EQ(result.m_Status, 0);
        return result.m_Output;
    };
    EXPECT_EQ(run({"d/x.entity", "blob1", "1a", "100644", "blob2", "2b", "100644"}),
              "d/x.entity: averageLifetime: 45.0 -> 46.5\n");
    EXPECT_EQ(run({"x.entity", "blob1", "1a", "100644", "blob2", "2b", "100644", "y.entity", "similarity index 95%"}),
              "x.entity -> y.entity moved\ny.entity: averageLifetime: 45.0 -> 46.5\n");
    EXPECT_EQ(run({"x.entity", "/dev/null", ".", ".", "blob2", "2b", "100644"}), "+ x.entity\n");
    EXPECT_EQ(run({"x.entity", "blob1", "1a", "100644", "/dev/null", ".", "."}), "- x.entity\n");
    WriteFile("blob2", "garbage");
    EXPECT_EQ(run({"x.entity", "blob1", "1a", "100644", "blob2", "2b", "100644"}), "x.entity: cannot be compared\n");
#ifndef _WIN32
    setenv("GIT_DIFF_PATH_COUNTER", "1", 1);
    EXPECT_EQ(run({"x.entity"}), "x.entity: unmerged\n");
    unsetenv("GIT_DIFF_PATH_COUNTER");
#endif
}

} // namespace
} // namespace Corvid
