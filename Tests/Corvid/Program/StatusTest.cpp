#include "Tests/Corvid/Program/ProgramFixture.h"

namespace Corvid {

using ::testing::HasSubstr;
using StatusTest = ProgramFixture;

// Statuses of the commands that write for other tools, and what they leave.
TEST_F(StatusTest, WritersTellWhatBecameOfTheirFile) {
    Put("a.mesh", Example("Mesh/cube.mesh"));
    Put("b.brushes", Example("Brushes/Portraits.brushes"));
    Put("q.entity", "TXT\r\nentityType \"Quest\"\r\ntier 0\r\n");
    Put("layouts/Quest.layout", "layout 1\nentity Quest\n\ttier int\n");
    Put("bad.mesh", "TXT\r\nMeshData\r\n");
    Put("cut.glb", std::string("glTF\2\0\0\0\xFF\0\0\0", 12));
    Put("needs.gltf", R"({"asset":{"version":"2.0"},"extensionsRequired":["KHR_draco_mesh_compression"]})");
    struct Case {
        std::vector<std::string> arguments;
        int status;
        const char* said; // on standard error
        const char* made; // the only destination that may be there
    };
    const Case kCases[] = {
        {{"export", "a.mesh", "-o", "a.glb"}, kExitDone, "", "a.glb"},
        {{"export", "b.brushes", "-o", "b.svg"}, kExitDone, "", "b.svg"},
        {{"export", "q.entity", "--layouts", "layouts", "-o", "q.json"}, kExitDone, "", "q.json"},
        {{"export", "q.entity", "-o", "n.json"}, kExitFindings, "[no-layout]", ""},
        {{"export", "bad.mesh", "-o", "n.glb"}, kExitFindings, "bad.mesh:3:1: error: ", ""},
        {{"export", "gone.mesh", "-o", "n.glb"}, kExitCouldNotRun, "[cannot-read]", ""},
        {{"export", "a.mesh", "-o", "gone/n.glb"}, kExitCouldNotRun, "[cannot-write]", ""},
        {{"export", "a.mesh", "-o", "n.svg"}, kExitCouldNotRun, "write .glb or .json", ""},
        {{"export", "a.mesh", "-o", "n.xyz"}, kExitCouldNotRun, ".glb, .svg or .json", ""},
        {{"export", "a.mesh"}, kExitCouldNotRun, "--output OUT is required", ""},
        {{"export", "-", "-o", "n.glb"}, kExitCouldNotRun, "standard input", ""},
        {{"import", "a.glb", "-o", "i.mesh"}, kExitDone, "", "i.mesh"},
        {{"import", "cut.glb", "-o", "n.mesh"}, kExitFindings, "[bad-value]", ""},
        {{"import", "a.mesh", "-o", "n.mesh"}, kExitFindings, "[not-an-archive]", ""},
        {{"import", "needs.gltf", "-o", "n.mesh"}, kExitFindings, "'KHR_draco_mesh_compression'", ""},
        {{"import", "needs.gltf", "-o", "n.mesh"}, kExitFindings, "[refused]", ""},
        {{"import", "gone.glb", "-o", "n.mesh"}, kExitCouldNotRun, "[cannot-read]", ""},
        {{"import", "a.glb", "-o", "gone/n.mesh"}, kExitCouldNotRun, "[cannot-write]", ""},
        {{"import", "a.glb", "-o", "n.glb"}, kExitCouldNotRun, "has to end with .mesh", ""},
        {{"view", "a.mesh", "-o", "v.html"}, kExitDone, "1 file, 0 with errors", "v.html"},
        {{"view", "q.entity", "--layouts", "layouts", "-o", "w.html"}, kExitDone, "1 file, 0 with errors", "w.html"},
        {{"view", "a.mesh", "bad.mesh", "-o", "x.html"}, kExitFindings, "2 files, 1 with errors", "x.html"},
        {{"view", "a.mesh", "gone.mesh", "-o", "y.html"}, kExitCouldNotRun, "[cannot-read]", "y.html"},
        {{"view", "a.mesh", "-o", "gone/n.html"}, kExitCouldNotRun, "[cannot-write]", ""},
        {{"view", "a.mesh", "-o", "n.html", "--max-size", "1K"}, kExitCouldNotRun, "nothing was written", ""},
        {{"view", "a.mesh", "-o", "n.html", "--max-size", "1X"}, kExitCouldNotRun, "'1X'", ""},
        {{"view", "a.mesh", "-o", "a.mesh"}, kExitCouldNotRun, "which it shows", ""},
        {{"view", "a.mesh", "-o", ""}, kExitCouldNotRun, "is empty", ""},
        {{"view", "-", "-o", "n.html"}, kExitCouldNotRun, "standard input", ""},
    };
    for (const Case& row : kCases) {
        const Run run = Corvid(row.arguments);
        EXPECT_EQ(run.m_Status, row.status) << row.arguments[0] << " " << row.arguments[1] << ": " << run.m_Err;
        EXPECT_EQ(run.m_Out, "");
        EXPECT_THAT(run.m_Err, HasSubstr(row.said)) << row.arguments[1];
        EXPECT_TRUE(*row.made == '\0' || Exists(row.made)) << row.made;
        for (const char* none : {"n.glb", "n.json", "n.svg", "n.xyz", "n.mesh", "n.html", "gone"})
            EXPECT_FALSE(Exists(none)) << row.arguments[0] << " " << row.arguments[1];
    }
    EXPECT_EQ(Get("a.mesh"), Example("Mesh/cube.mesh"));
}

} // namespace Corvid
