#include "Tests/Corvid/Program/ProgramFixture.h"

#include <map>
#include <sstream>

#include "Corvid/Diagnostics/Diagnostic.h"

namespace Corvid {

// The page that lists what the program says about files: every code is there, and its example is what is said.
class DiagnosticsPageTest : public ProgramFixture {
protected:
    // The examples by code, out of the rows "| `code` | `example` |".
    static std::map<std::string, std::string> Examples() {
        std::map<std::string, std::string> examples;
        std::istringstream page(Get(std::string(CORVID_SOURCE_FOLDER) + "/Docs/Diagnostics.md"));
        for (std::string line; std::getline(page, line);) {
            const std::size_t middle = line.find("` | `");
            if (line.starts_with("| `") && middle != line.npos && line.ends_with("` |"))
                examples[line.substr(3, middle - 3)] = line.substr(middle + 5, line.size() - middle - 8);
        }
        return examples;
    }

    static std::string Changed(const char* example, const std::string& from, const std::string& to) {
        std::string text = Example(example);
        EXPECT_NE(text.find(from), std::string::npos) << from;
        return text.replace(text.find(from), from.size(), to);
    }
    static std::string Cube(const std::string& from, const std::string& to) {
        return Changed("Mesh/cube.mesh", from, to);
    }

    struct Row {
        DiagnosticCode code;
        const char* file;
        std::string bytes;
        std::vector<std::string> arguments; // none: check the file
    };
};

TEST_F(DiagnosticsPageTest, EveryExampleIsWhatIsSaid) {
    const char kBlast[] = "Particle/ReactorBlast.particle";
    const char kPanels[] = "Brushes/ConsolePanels.brushes";
    const char kHull[] = "Entity/HullFragments.entity";
    const std::string binary = Example("Mesh/cube-binary.mesh");
    std::string quoted = binary;
    quoted.replace(quoted.find(std::string("C\0a\0r", 5)), 1, "\"");
    const std::string quest = "TXT\r\nentityType \"Quest\"\r\ntier 0\r\n";
    Put("assets/CargoCrate-si.dds", "");
    Put("layouts/Quest.layout", "layout 1\nentity Quest\n\ttier flot\n");
    Put("drafts/Quest.layout", "layout 1\nentity Quest\n\ttier int ?\n");
    const std::vector<std::string> toText = {"convert", "--to", "txt", "-i", "a.mesh"};
    const std::vector<std::string> toSix = {"convert", "--to", "txt", "--verify", "--floats", "six", "-i", "a.mesh"};
    const std::string triangle = // with a camera that a mesh has no place for
        R"({"asset":{"version":"2.0"},"buffers":[{"byteLength":36,"uri":"data:application/octet-stream;base64,)"
        R"(AAAAAAAAAAAAAAAAAACAPwAAAAAAAAAAAAAAAAAAgD8AAAAA"}],"bufferViews":[{"buffer":0,"byteLength":36}],)"
        R"("accessors":[{"bufferView":0,"componentType":5126,"count":3,"type":"VEC3"}],"scene":0,)"
        R"("meshes":[{"primitives":[{"attributes":{"POSITION":0}}]}],"nodes":[{"mesh":0}],"scenes":[{"nodes":[0]}],)"
        R"("cameras":[{"type":"perspective","perspective":{"yfov":1,"znear":0.1}}]})";
    const Row kRows[] = {
        {DiagnosticCode::CannotRead, "other", "", {"check", "gone.mesh"}},
        {DiagnosticCode::CannotWrite, "a.mesh", binary, {"convert", "--to", "txt", "-o", "gone/a.mesh", "a.mesh"}},
        {DiagnosticCode::NotAnArchive, "a.mesh", "Something 1\r\n", {}},
        {DiagnosticCode::UnknownKind, "x.dat", "TXT\r\nSomething 1\r\n", {}},
        {DiagnosticCode::KindDiffers, "a.mesh", Example(kBlast), {}},
        {DiagnosticCode::UnknownType, "a.entity", Changed(kHull, "Debris", "Debri"), {}},
        {DiagnosticCode::NoLayout, "a.entity", quest, {}},
        {DiagnosticCode::MissingField, "a.mesh", Cube("BoundingRadius", "BoundingRadus"), {}},
        {DiagnosticCode::UnknownLabel, "a.mesh", Cube("\tBoundingRadius", "\tExtra 1\r\n\tBoundingRadius"), {}},
        {DiagnosticCode::OutOfOrder,
         "a.mesh",
         Cube("\tmaxDiffuseMipLevel 0\r\n\thasValidTangents TRUE", "\thasValidTangents TRUE\r\n\tmaxDiffuseMipLevel 0"),
         {}},
        {DiagnosticCode::BadValue, "a.mesh", Cube("0.866025", "0.866025x"), {}},
        {DiagnosticCode::BadString, "a.mesh", Cube("-da.dds\"", "-da.dds"), {}},
        {DiagnosticCode::TooLong, "a.mesh", Cube("CargoCrate-da", std::string(296, 'C')), {}},
        {DiagnosticCode::BadText, "a.mesh", Cube("CargoCrate", "Cargo\xFF"), {}},
        {DiagnosticCode::UnknownWord, "a.particle", Changed(kBlast, "\"Point\"", "\"Poin\""), {}},
        {DiagnosticCode::BadCount, "a.mesh", Cube("NumMaterials 1", "NumMaterials -1"), {}},
        {DiagnosticCode::InputEnds, "a.mesh", binary.substr(0, 200), {}},
        {DiagnosticCode::UnreadInput, "a.mesh", binary + "ab", {}},
        {DiagnosticCode::NotInText, "a.mesh", quoted, toText},
        {DiagnosticCode::NotFinite, "a.mesh", Cube("Glossiness 50.000000", "Glossiness nan"), {}},
        {DiagnosticCode::IndexRange, "a.mesh", Cube("iMaterial 0", "iMaterial 4"), {}},
        {DiagnosticCode::DegenerateTriangle, "a.mesh", Cube("iVertex1 2", "iVertex1 0"), {}},
        {DiagnosticCode::Bounds, "a.mesh", Cube("BoundingRadius 0.866025", "BoundingRadius 0.800000"), {}},
        {DiagnosticCode::StaleLists, "a.mesh", Cube("Index 4", "Index 3"), {}},
        {DiagnosticCode::Unattached,
         "a.particle",
         Changed(kBlast, "attachedEmitterName \"Sparks\"", "attachedEmitterName \"Spraks\""),
         {}},
        {DiagnosticCode::DuplicateName,
         "a.brushes",
         Changed(kPanels, "\"MessagePanelFrame\"", "\"StarChartBackdrop\""),
         {}},
        {DiagnosticCode::EmptyName, "a.brushes", Changed(kPanels, "\"StarChartBackdrop\"", "\"\""), {}},
        {DiagnosticCode::MissingReference,
         "a.mesh",
         Example("Mesh/cube.mesh"),
         {"check", "--references", "assets", "a.mesh"}},
        {DiagnosticCode::Unproven, "a.entity", quest, {"check", "--layouts", "drafts", "a.entity"}},
        {DiagnosticCode::BadLayout, "a.entity", quest, {"check", "--layouts", "layouts", "a.entity"}},
        {DiagnosticCode::Loss, "a.mesh", Cube("\t\tColor 0", "\t\tColor ff102030"), {"check", "--loss", "a.mesh"}},
        {DiagnosticCode::NotImported, "a.gltf", triangle, {"import", "a.gltf", "-o", "b.mesh"}},
        {DiagnosticCode::Refused, "a.mesh", Cube("0.866025", "0.8660254"), toSix},
    };
    const std::map<std::string, std::string> examples = Examples();
    std::size_t next = 0;
    for (const Row& row : kRows) {
        const std::string code(WordOf(row.code));
        EXPECT_EQ(static_cast<std::size_t>(row.code), next++) << "each code has a row: " << code;
        Put(row.file, row.bytes);
        const Run run = Corvid(row.arguments.empty() ? std::vector<std::string>{"check", row.file} : row.arguments);
        const auto example = examples.find(code);
        ASSERT_NE(example, examples.end()) << code << " is not in Docs/Diagnostics.md";
        EXPECT_THAT(example->second, ::testing::EndsWith("[" + code + "]"));
        EXPECT_THAT(run.m_Out + run.m_Err, ::testing::HasSubstr(example->second + "\n")) << code;
    }
    EXPECT_EQ(next, static_cast<std::size_t>(DiagnosticCode::Refused) + 1);
    EXPECT_EQ(examples.size(), next);
}

} // namespace Corvid
