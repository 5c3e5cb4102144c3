#include "Tests/Corvid/Program/ProgramFixture.h"

namespace Corvid {

using ::testing::HasSubstr;
using ConvertTest = ProgramFixture;

TEST_F(ConvertTest, WritesWhatChangesAndTellsIt) {
    Put("d/a.mesh", Example("Mesh/cube.mesh"));
    Put("d/b.mesh", Example("Mesh/cube-binary.mesh"));
    Put("d/bad.mesh", "TXT\r\nMeshData\r\n");
    Put("out/bad.mesh", "old");
    Run run = Corvid({"convert", "--to", "bin", "-o", "out", "d", "gone.mesh"});
    EXPECT_EQ(run.m_Status, kExitCouldNotRun);
    EXPECT_THAT(run.m_Err, HasSubstr("2 converted, 0 unchanged, 1 refused, 1 failed\n"));
    EXPECT_THAT(run.m_Err, HasSubstr("gone.mesh: error: "));
    EXPECT_EQ(Get("out/bad.mesh"), "old");
    EXPECT_EQ(Get("out/b.mesh"), Example("Mesh/cube-binary.mesh"));
    EXPECT_EQ(Get("out/a.mesh"), Get("out/b.mesh"));

    const auto before = std::filesystem::last_write_time("out/a.mesh");
    run = Corvid({"convert", "--to", "bin", "-o", "out", "d/a.mesh", "d/b.mesh"});
    EXPECT_EQ(run.m_Status, kExitDone);
    EXPECT_EQ(run.m_Err, "0 converted, 2 unchanged, 0 refused, 0 failed\n");
    EXPECT_EQ(std::filesystem::last_write_time("out/a.mesh"), before);
}

TEST_F(ConvertTest, CheckAndDryRunWriteNothing) {
    Put("d/a.mesh", Example("Mesh/cube.mesh"));
    Put("d/b.mesh", Example("Mesh/cube-binary.mesh"));
    Run run = Corvid({"convert", "--to", "txt", "--check", "d"});
    EXPECT_EQ(run.m_Status, kExitFindings);
    EXPECT_EQ(run.m_Out, "d/b.mesh\n");
    EXPECT_EQ(run.m_Err, "1 converted, 1 unchanged, 0 refused, 0 failed\n");
    EXPECT_EQ(Corvid({"convert", "--to", "txt", "--check", "-o", "out", "d"}).m_Out, "out/a.mesh\nout/b.mesh\n");
    EXPECT_EQ(Corvid({"convert", "--to", "txt", "-n", "-o", "-", "d/b.mesh"}).m_Out, "convert d/b.mesh -> -\n");
    run = Corvid({"convert", "--to", "txt", "-n", "-o", "out", "d"});
    EXPECT_EQ(run.m_Status, kExitDone);
    EXPECT_EQ(run.m_Out, "convert d/a.mesh -> out/a.mesh\nconvert d/b.mesh -> out/b.mesh\n");
    EXPECT_FALSE(Exists("out"));
    EXPECT_EQ(Corvid({"convert", "--to", "txt", "-i", "d"}).m_Status, kExitDone);
    EXPECT_EQ(Corvid({"convert", "--to", "txt", "--check", "d"}).m_Status, kExitDone);
}

TEST_F(ConvertTest, LossIsWrittenOnlyWhenAllowed) {
    std::string text = Example("Entity/HullFragments.entity");
    text.replace(text.find("averageLifetime"), 3, "xyz");
    Put("a.entity", text);
    Put("none.mesh", "no archive");
    EXPECT_EQ(Corvid({"convert", "--to", "bin", "-o", "out/", "a.entity"}).m_Status, kExitFindings);
    EXPECT_FALSE(Exists("out"));
    const Run run = Corvid({"convert", "--to", "bin", "--allow-loss", "-o", "out/", "a.entity", "none.mesh"});
    EXPECT_EQ(run.m_Status, kExitFindings); // of the file that is no archive
    EXPECT_THAT(run.m_Err, HasSubstr("a.entity:3:1: warning: "));
    EXPECT_THAT(run.m_Err, HasSubstr("1 converted, 0 unchanged, 1 refused, 0 failed\n"));
    EXPECT_TRUE(Exists("out/a.entity"));
    EXPECT_FALSE(Exists("out/none.mesh"));
}

TEST_F(ConvertTest, VerifyRefusesWhatWouldNotComeBack) {
    std::string text = Example("Mesh/cube.mesh");
    const std::string radius = "BoundingRadius ";
    const std::size_t place = text.find(radius) + radius.size();
    text.replace(place, text.find('\r', place) - place, "0.86602540");
    Put("a.mesh", text);
    Run run = Corvid({"convert", "--to", "txt", "--verify", "--floats", "six", "-o", "b.mesh", "a.mesh"});
    EXPECT_EQ(run.m_Status, kExitFindings);
    EXPECT_THAT(run.m_Err, HasSubstr("MeshData.BoundingRadius"));
    EXPECT_THAT(run.m_Err, HasSubstr("[refused]"));
    EXPECT_FALSE(Exists("b.mesh"));
    run = Corvid({"convert", "--to", "txt", "--verify", "-o", "b.mesh", "a.mesh"});
    EXPECT_EQ(run.m_Status, kExitDone) << run.m_Err;
    EXPECT_THAT(Get("b.mesh"), HasSubstr("BoundingRadius 0.8660254\r\n"));
}

TEST_F(ConvertTest, UpdateLeavesOutWhatIsOlder) {
    Put("a.mesh", Example("Mesh/cube.mesh"));
    Put("out/a.mesh", "newer");
    std::filesystem::last_write_time("a.mesh", std::filesystem::last_write_time("out/a.mesh") - std::chrono::hours(1));
    EXPECT_EQ(Corvid({"convert", "--to", "bin", "--update", "-o", "out", "a.mesh"}).m_Err,
              "0 converted, 1 unchanged, 0 refused, 0 failed\n");
    std::filesystem::last_write_time("a.mesh", std::filesystem::last_write_time("out/a.mesh") + std::chrono::hours(1));
    EXPECT_EQ(Corvid({"convert", "--to", "bin", "--update", "-o", "out", "a.mesh"}).m_Err,
              "1 converted, 0 unchanged, 0 refused, 0 failed\n");
}

#ifndef _WIN32
TEST_F(ConvertTest, InPlaceKeepsLinksAndModes) {
    Put("far/a.mesh", Example("Mesh/cube.mesh"));
    std::filesystem::permissions("far/a.mesh", std::filesystem::perms(0640));
    std::filesystem::create_symlink("far/a.mesh", "l.mesh");
    EXPECT_EQ(Corvid({"convert", "--to", "bin", "-i", "l.mesh"}).m_Status, kExitDone);
    EXPECT_TRUE(std::filesystem::is_symlink("l.mesh"));
    EXPECT_EQ(Get("far/a.mesh").substr(0, 4), "BIN\n");
    EXPECT_EQ(std::filesystem::status("far/a.mesh").permissions(), std::filesystem::perms(0640));
}
#endif

TEST_F(ConvertTest, AnyNumberOfJobsPrintsTheSame) {
    for (int i = 0; i < 60; ++i)
        Put("d/f" + std::to_string(i) + ".entity",
            i % 7 == 0 ? std::string(kShards) : Example("Entity/IceShards.entity"));
    const Run one = Corvid({"convert", "--to", "bin", "--check", "-j", "1", "d"});
    for (const char* jobs : {"2", "64"}) {
        const Run many = Corvid({"convert", "--to", "bin", "--check", "-j", jobs, "d"});
        EXPECT_EQ(many.m_Status, one.m_Status);
        EXPECT_EQ(many.m_Out, one.m_Out);
        EXPECT_EQ(many.m_Err, one.m_Err);
    }
}

} // namespace Corvid
