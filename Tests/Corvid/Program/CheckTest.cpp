#include "Tests/Corvid/Program/ProgramFixture.h"

#include "Corvid/Diagnostics/DiagnosticRendering.h"
#include "Corvid/Json/Json.h"

namespace Corvid {

using ::testing::HasSubstr;

class CheckTest : public ProgramFixture {
protected:
    // The cube with one thing changed.
    static std::string Cube(const std::string& from, const std::string& to) {
        std::string text = Example("Mesh/cube.mesh");
        EXPECT_NE(text.find(from), std::string::npos) << from;
        return text.replace(text.find(from), from.size(), to);
    }
};

TEST_F(CheckTest, WarnsOfContentThatLooksWrong) {
    struct Case {
        const char* name;
        std::string text;
        const char* line;
    };
    std::string effect = Example("Particle/ReactorBlast.particle");
    const std::string attached = "attachedEmitterName \"";
    effect.insert(effect.find(attached) + attached.size(), "x");
    std::string brushes = Example("Brushes/ConsolePanels.brushes");
    const std::string name = "\tname \"";
    const std::size_t place = brushes.find(name) + name.size();
    brushes.erase(place, brushes.find('"', place) - place);
    const Case cases[] = {
        {"material.mesh", Cube("iMaterial 0", "iMaterial 4"),
         "MeshData.Triangle[0].iMaterial: 4, and there is 1 material [index-range]"},
        {"vertex.mesh", Cube("iVertex1 ", "iVertex1 9"), "MeshData.Triangle[0].iVertex1: 9"},
        {"radius.mesh", Cube("BoundingRadius 0.866025", "BoundingRadius 0.800000"),
         "outside the stored radius [bounds]"},
        {"extents.mesh", Cube("[ 0.500000 0.500000 0.500000 ]", "[ 0.500000 0.400000 0.500000 ]"),
         "0.1 outside the stored extents [bounds]"},
        {"effect.particle", effect, "[unattached]"},
        {"set.brushes", brushes, "brush[0].name: the name is empty [empty-name]"},
        {"empty.mesh", "", "empty.mesh: error: the file is empty [not-an-archive]"},
    };
    for (const Case& row : cases) {
        Put(row.name, row.text);
        const Run run = Corvid({"check", row.name});
        EXPECT_THAT(run.m_Out, HasSubstr(row.line)) << row.name;
    }
    EXPECT_EQ(Corvid({"check", "material.mesh"}).m_Status, kExitDone);
    EXPECT_EQ(Corvid({"check", "--strict", "material.mesh"}).m_Status, kExitFindings);
    EXPECT_EQ(Corvid({"check", "-q", "material.mesh"}).m_Out, "");
    EXPECT_EQ(Corvid({"check", "--list", "--strict", "material.mesh"}).m_Out, "BAD material.mesh\n");
}

TEST_F(CheckTest, TellsOfNonFiniteNumbersStaleListsAndRepeats) {
    std::string text = Cube("Glossiness ", "Glossiness nan ");
    text.erase(text.find("nan ") + 3, text.find('\r', text.find("nan ")) - text.find("nan ") - 3);
    Put("nan.mesh", text);
    EXPECT_THAT(Corvid({"check", "nan.mesh"}).m_Out,
                HasSubstr("MeshData.Material[0].Glossiness: not a number [not-finite]"));

    const std::string count = "NumCachedVertexIndicesInDirection:UP ";
    text = Example("Mesh/cube.mesh");
    const std::size_t index = text.find("Index ", text.find(count)) + 6;
    text.replace(index, text.find('\r', index) - index, "1000");
    Put("range.mesh", text);
    EXPECT_THAT(Corvid({"check", "range.mesh"}).m_Out,
                HasSubstr("NumCachedVertexIndicesInDirection:UP[0]: 1000, and there are 24 vertices [index-range]"));

    Put("same.brushes",
        "TXT\r\nonlyLoadOnDemand TRUE\r\nbrushCount 2\r\n"
        "brush\r\n\tname \"a\"\r\n\tcontent \"Simple\"\r\n\tfileName \"\"\r\n\tpixelBox [ 0 , 0 , 1 , 1 ]\r\n"
        "brush\r\n\tname \"a\"\r\n\tcontent \"Simple\"\r\n\tfileName \"\"\r\n\tpixelBox [ 0 , 0 , 1 , 1 ]\r\n");
    EXPECT_THAT(
        Corvid({"check", "same.brushes"}).m_Out,
        HasSubstr("same.brushes: warning: brush[1].name: 'a' is the name at brush[0].name, too [duplicate-name]"));
}

TEST_F(CheckTest, JsonEndsWithASummary) {
    Put("d/a.mesh", Example("Mesh/cube.mesh"));
    Put("d/b.mesh", Cube("iMaterial 0", "iMaterial 4"));
    Put("d/c.mesh", "");
    const Run run = Corvid({"check", "--format", "json", "d"});
    std::vector<Json> lines;
    std::istringstream text(run.m_Out);
    for (std::string line; std::getline(text, line);)
        lines.push_back(Json::parse(line));
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_EQ(lines[0]["file"], "d/b.mesh");
    EXPECT_EQ(lines[0]["field"], "MeshData.Triangle[0].iMaterial");
    EXPECT_EQ(lines[1]["code"], "not-an-archive");
    EXPECT_EQ(lines[2].dump(), R"({"summary":{"files":3,"errors":1,"warnings":1}})");
}

TEST_F(CheckTest, ShowsFiveOfAKindAndAHundredLines) {
    DiagnosticLog log;
    for (int i = 0; i < 9; ++i)
        log.Add(DiagnosticCode::IndexRange, {}, "M.T[" + std::to_string(i) + "].i", "4");
    for (int i = 0; i < 200; ++i)
        log.Add(DiagnosticCode::UnknownLabel, DiagnosticPlace::AtLine(static_cast<std::uint64_t>(i), 1), "", "x");
    const auto shown = SelectShown(log, {});
    ASSERT_EQ(shown.size(), 101u);
    EXPECT_EQ(shown[5].m_More, 4u);
    EXPECT_TRUE(shown[100].m_IsClosing);
    EXPECT_EQ(shown[100].m_More, 106u);
    DiagnosticLimits all;
    all.m_MostLines = 0;
    EXPECT_EQ(SelectShown(log, all).size(), 209u);

    std::string text;
    AppendDiagnostic(text, "a,b\n", "\"a,b\\n\"", shown[5], {});
    AppendDiagnostic(text, "a,b\n", "\"a,b\\n\"", shown[100], {});
    AppendDiagnostic(text, "a,b\n", "\"a,b\\n\"", shown[6], {DiagnosticFormat::Github, false});
    AppendDiagnostic(text, "\xFF.mesh", "\xFF.mesh", shown[5], {DiagnosticFormat::Json, false});
    EXPECT_EQ(text, "\"a,b\\n\": warning: M.T[].i: ... and 4 more [index-range]\n"
                    "\"a,b\\n\": 106 diagnostics left out\n"
                    "::error file=a%2Cb%0A,line=0,col=1,title=unknown-label::x [unknown-label]\n"
                    "{\"file\":\"\xEF\xBF\xBD.mesh\",\"severity\":\"warning\",\"code\":\"index-range\","
                    "\"field\":\"M.T[].i\",\"more\":4}\n");
}

TEST_F(CheckTest, CountsWhatIsNotKept) {
    DiagnosticLog log(20);
    for (int i = 0; i < 23; ++i)
        log.Add(DiagnosticCode::IndexRange, {}, "M.T[" + std::to_string(i) + "].i", "");
    log.Add(DiagnosticCode::BadValue, {}, "M.a", "");
    EXPECT_TRUE(log.HasErrors());
    const auto shown = SelectShown(log, {});
    ASSERT_EQ(shown.size(), 7u);
    EXPECT_EQ(shown[5].m_More, 18u);
    EXPECT_EQ(shown[6].m_More, 1u);
    EXPECT_TRUE(shown[6].m_IsClosing);
}

TEST_F(CheckTest, LossIsNotedByField) {
    const std::string examples = std::string(CORVID_SOURCE_FOLDER) + "/Examples/";
    EXPECT_EQ(Corvid({"check", "--loss", examples + "Mesh", examples + "Particle", examples + "Brushes"}).m_Out, "");
    EXPECT_EQ(Corvid({"check", "--strict", "--loss", "--layouts", examples + "Layouts", examples}).m_Out, "");
    Put("color.mesh", Cube("\t\tColor 0", "\t\tColor ff102030")); // of a vertex: the engine does not keep it
    EXPECT_THAT(Corvid({"check", "--loss", "color.mesh"}).m_Out,
                HasSubstr("note: MeshData.Vertex[0].Color: 1 value does not survive loading and saving, by 1 [loss]"));

    Put("layouts/Quest.layout", "layout 1\nentity Quest\n\ttint color\n");
    std::string bytes = "BIN\n" + std::string("\5\0\0\0Q\0u\0e\0s\0t\0", 14);
    for (const float channel : {0.5f, 0.25f, 1.0f, 0.0f}) // text has 8 bits for each
        bytes.append(reinterpret_cast<const char*>(&channel), sizeof channel);
    Put("q.entity", bytes);
    EXPECT_THAT(Corvid({"check", "--loss", "--layouts", "layouts", "q.entity"}).m_Out,
                HasSubstr("q.entity: note: tint: 1 value does not come back from text, by 0.0019"));
}

} // namespace Corvid
