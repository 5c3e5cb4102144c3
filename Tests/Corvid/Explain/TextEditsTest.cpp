#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "Tests/Corvid/Explain/ExplainFixture.h"

namespace Corvid {
namespace {

const char kCube[] = "Mesh/cube.mesh";
const char kBlast[] = "Particle/ReactorBlast.particle";
const char kPanels[] = "Brushes/ConsolePanels.brushes";
const char kHull[] = "Entity/HullFragments.entity";

const std::string kLongWord = '"' + std::string(256, 'w') + '"';
const std::string kLongLine = '"' + std::string(2000, 'w') + '"';

enum class Do { Replace, Drop, Double, Swap, Insert, Move, Cut };

// One edit of an example: what it does to the line, and all that may be found then. Lines count from 1.
struct Edit {
    const char* m_Name;
    const char* m_Example;
    Do m_Do;
    std::size_t m_Line;
    const char* m_Old; // of Replace
    const char* m_New; // of Replace, Insert
    const char* m_Findings;
    std::size_t m_To = 0;    // of Move: the line it then is
    std::size_t m_Count = 1; // of Move: lines
};

const Edit kEdits[] = {
    // Labels
    {"Misspelt", kCube, Do::Replace, 35, "NumVertices", "NumVertex", "35:2 MeshData.NumVertices [missing-field]\n"},
    {"MisspeltRecord", kCube, Do::Replace, 9, "Material", "Materiel", "9:2 MeshData.Material[0] [missing-field]\n"},
    {"CaseOnly", kHull, Do::Replace, 4, "lifetime", "Lifetime", "4:1 lifetimeVariancePerc [missing-field]\n"},
    {"NoNearLabel", kCube, Do::Replace, 5, "BoundingRadius", "Radius",
     "5:2 MeshData.BoundingRadius [missing-field]\n5:2 MeshData.Radius [unknown-label]\n"},
    {"LongLabelMisspelt", kBlast, Do::Replace, 107, "Azimuthal", "Azzimuthal",
     "107:3 ParticleSimulation.EmitterContents[1].ParticleMaxStartSpeedAzimuthalTangential [missing-field]\n"},
    {"FieldDropped", kCube, Do::Drop, 19, "", "", "19:2 MeshData.Material[0].Glossiness [missing-field]\n"},
    {"RecordLineDropped", kCube, Do::Drop, 28, "", "", "28:3 MeshData.Point[1] [missing-field]\n"},
    {"StateLineDropped", kPanels, Do::Drop, 58, "", "", "58:3 brush[3].Pressed [missing-field]\n"},
    {"MatrixLineDropped", kCube, Do::Drop, 24, "", "", "24:5 MeshData.Point[0].Orientation [missing-field]\n"},
    {"FieldDoubled", kCube, Do::Double, 41, "", "", "42:3 MeshData.Vertex[0].U0 [unknown-label]\n"},
    {"FieldsSwapped", kCube, Do::Swap, 10, "", "",
     "10:3 MeshData.Material[0].SelfIlluminationTextureFileName [out-of-order]\n"},
    {"RecordLineDoubled", kPanels, Do::Double, 30, "", "", "31:2 brush[2].Pressed [unknown-label]\n"},
    {"ElementLineDoubled", kCube, Do::Double, 36, "", "", "37:2 MeshData.Vertex [unknown-label]\n"},
    {"MatrixLineDoubled", kCube, Do::Double, 24, "", "", "25:3 MeshData.Point[0].Orientation [unknown-label]\n"},
    {"LineBeyondTheRecord", kCube, Do::Insert, 20, "", "\t\tShine 1",
     "20:3 MeshData.Material[0].Shine [unknown-label]\n"},
    {"LineWithNestedOnes", kCube, Do::Insert, 8, "", "\tExtra\r\n\t\tDeep 1\r\n\t\tDeeper 2",
     "8:2 MeshData.Extra [unknown-label]\n"},
    {"BlankLine", kCube, Do::Insert, 12, "", "", "12:1 MeshData.Material[0] [unknown-label]\n"},
    {"LineInFrontOfTheRecord", kCube, Do::Insert, 12, "", "# textures", "12:1 MeshData.Material[0] [unknown-label]\n"},
    {"NestedLineInFrontOfItsRecord", kCube, Do::Insert, 21, "", "\t\tPosition 1",
     "21:3 MeshData.Position [unknown-label]\n"},
    {"RecordLineInFrontOfItsCount", kCube, Do::Swap, 8, "", "", "8:2 MeshData.Material [out-of-order]\n"},
    {"IndentedTooFar", kCube, Do::Replace, 5, "\t", "\t\t\t", ""},

    // Lines that were moved
    {"FarDownItsRecord", kHull, Do::Move, 4, "", "", "4:1 minLinearSpeed [out-of-order]\n", 10},
    {"IntoANestedRecord", kCube, Do::Move, 7, "", "", "7:2 MeshData.NumMaterials [out-of-order]\n", 13},
    {"EarlyIntoANestedRecord", kPanels, Do::Move, 22, "", "", "14:2 brush[1].fileName [out-of-order]\n", 14},
    {"RecordLineIntoARecord", kPanels, Do::Move, 39, "", "",
     "29:2 brush[2].Normal [unknown-label]\n40:3 brush[2].Normal [missing-field]\n", 29},
    {"OutOfAllRecords", kPanels, Do::Move, 2, "", "", "2:1 brushCount [out-of-order]\n", 37},
    {"BehindTheLineOfARecord", kPanels, Do::Move, 35, "", "",
     "35:2 brush[2].CursorOver.pixelBox [missing-field]\n42:3 brush[3].pixelBox [unknown-label]\n", 42},
    {"ElementIntoAnElement", kCube, Do::Move, 36, "", "",
     "50:2 MeshData.Vertex [unknown-label]\n252:2 MeshData.Vertex[23] [missing-field]\n", 50, 9},
    {"FileLineIntoAList", kCube, Do::Move, 2, "", "", "2:2 MeshData [missing-field]\n300:1 MeshData [unknown-label]\n",
     300},
    {"CopyInFrontOfWhatIsNested", kPanels, Do::Insert, 31, "",
     "\tPressed\r\n\t\tfileName \"a\"\r\n\t\tpixelBox [ 0 , 0 , 1 , 1 ]", "31:2 brush[2].Pressed [unknown-label]\n"},

    // What merges and editors leave
    {"Conflict", kCube, Do::Replace, 5, "\tBoundingRadius 0.866025",
     "<<<<<<< HEAD\r\n\tBoundingRadius 0.5x\r\n=======\r\n\tBoundingRadius 0.6\r\n>>>>>>> topic",
     "5:1 [unknown-label]\n6:20 MeshData.BoundingRadius [bad-value]\n"},
    {"ConflictWithItsOrigin", kCube, Do::Insert, 36, "",
     "<<<<<<< HEAD\r\n||||||| base\r\n\tVertex\r\n=======\r\n\tVertex\r\n>>>>>>> topic", "36:1 [unknown-label]\n"},
    {"FaultBehindAConflict", kCube, Do::Replace, 35, "\tNumVertices 24",
     "<<<<<<< HEAD\r\n\tNumVertices 24\r\n=======\r\n>>>>>>> topic\r\n\tExtra 1",
     "35:1 [unknown-label]\n39:2 MeshData.Extra [unknown-label]\n"},
    {"HalfAConflict", kCube, Do::Insert, 35, "", "<<<<<<< HEAD", "35:1 MeshData [unknown-label]\n"},
    {"NoBreakSpaceBehindALabel", kCube, Do::Replace, 35, "NumVertices ", "NumVertices\xC2\xA0",
     "35:2 MeshData.NumVertices [missing-field]\n"},
    {"NoBreakSpaceInFront", kCube, Do::Replace, 36, "\t", "\t\xC2\xA0", "36:2 MeshData.Vertex[0] [missing-field]\n"},
    {"RecordLineCommentedOut", kCube, Do::Replace, 45, "\tVertex", "//\tVertex",
     "45:1 MeshData [unknown-label]\n46:3 MeshData.Vertex[1] [missing-field]\n"},
    {"TabInALabel", kCube, Do::Replace, 22, "DataString", "Data\tString",
     "22:3 MeshData.Point[0].DataString [missing-field]\n"},
    {"NoBlankBehindALabel", kCube, Do::Replace, 22, "DataString ", "DataString",
     "22:3 MeshData.Point[0].DataString [missing-field]\n"},
    {"TailOfAWordThatDecides", kPanels, Do::Replace, 26, "\"States\"", "\"States\" x",
     "26:19 brush[2].content [bad-value]\n"},
    {"QuoteInFrontOfAWordThatDecides", kPanels, Do::Replace, 26, "\"States\"", "\"\"States\"",
     "26:12 brush[2].content [bad-value]\n"},

    // Lists
    {"CountMissing", kCube, Do::Drop, 35, "", "", "35:2 MeshData.NumVertices [missing-field]\n"},
    {"CountOfEqualElementsMissing", kCube, Do::Drop, 318, "", "",
     "318:2 MeshData.NumCachedVertexIndicesInDirection:DOWN [missing-field]\n"},
    {"CountTooSmall", kCube, Do::Replace, 20, "2", "1", "28:2 MeshData.Point [unknown-label]\n"},
    {"CountTooLarge", kCube, Do::Replace, 20, "2", "4", "35:2 MeshData.Point[2] [missing-field]\n"},
    {"CountNegative", kCube, Do::Replace, 20, "2", "-2", "20:12 MeshData.NumPoints [bad-count]\n"},
    {"CountBeyondTheFile", kCube, Do::Replace, 35, "24", "2000000000", "35:14 MeshData.NumVertices [bad-count]\n"},
    {"CountBeyondTheSlots", kBlast, Do::Replace, 43, "2", "3",
     "43:15 ParticleSimulation.EmitterContents[0].numTextures [bad-count]\n"},
    {"CountIsNoNumber", kCube, Do::Replace, 20, "2", "two", "20:12 MeshData.NumPoints [bad-value]\n"},
    {"ElementNamedByItsCount", kCube, Do::Replace, 319, "4", "x",
     "319:8 MeshData.NumCachedVertexIndicesInDirection:DOWN[0] [bad-value]\n"},
    {"BlankLineBetweenElements", kCube, Do::Insert, 316, "", "", "316:1 MeshData [unknown-label]\n"},
    {"CountNegativeWhereNoneStand", kBlast, Do::Replace, 277, "0", "-1",
     "277:23 ParticleSimulation.AffectorContents[5].numAttachedEmitters [bad-count]\n"},
    {"TypeWordDropped", kBlast, Do::Drop, 6, "", "", "6:2 ParticleSimulation.EmitterType[0] [missing-field]\n"},
    {"TypeWordUnknown", kBlast, Do::Replace, 6, "Point", "Cone",
     "6:14 ParticleSimulation.EmitterType[0] [unknown-word]\n"},
    {"TypeWordWithoutClass", kBlast, Do::Replace, 6, "Point", "MeshSurface",
     "6:14 ParticleSimulation.EmitterType[0] [unknown-word]\n"},
    {"TypeWordTooLong", kBlast, Do::Replace, 6, "\"Point\"", kLongWord.c_str(),
     "6:14 ParticleSimulation.EmitterType[0] [too-long]\n"},
    {"ContentWordLost", kPanels, Do::Replace, 11, "content \"Margins\"", "Nothing 1",
     "11:2 brush[1].content [missing-field]\n11:2 brush[1].Nothing [unknown-label]\n"},
    {"ContentWordMisspelt", kPanels, Do::Replace, 11, "Margins", "Margin", "11:10 brush[1].content [unknown-word]\n"},
    {"ContentWordTooLong", kPanels, Do::Replace, 26, "\"States\"", kLongWord.c_str(),
     "26:10 brush[2].content [too-long]\n"},
    {"ContentWordOnALongLine", kPanels, Do::Replace, 26, "\"States\"", kLongLine.c_str(), "26:1023 [bad-text]\n"},
    {"TypeIsNoText", kHull, Do::Replace, 2, "Debris", "Debri\xFF", "2:18 [bad-text]\n"},
    {"TypeTooLong", kHull, Do::Replace, 2, "\"Debris\"", kLongWord.c_str(), "2:12 entityType [too-long]\n"},

    // Values
    {"NumberWithATail", kCube, Do::Replace, 5, "0.866025", "0.866025x", "5:25 MeshData.BoundingRadius [bad-value]\n"},
    {"FractionOfAnInteger", kCube, Do::Replace, 3, "0", "0.5", "3:22 MeshData.maxDiffuseMipLevel [bad-value]\n"},
    {"IntegerTooLarge", kCube, Do::Replace, 3, "0", "2147483648", "3:21 MeshData.maxDiffuseMipLevel [bad-value]\n"},
    {"FloatTooLarge", kCube, Do::Replace, 5, "0.866025", "1e39", "5:17 MeshData.BoundingRadius [bad-value]\n"},
    {"BoolInALongerWord", kCube, Do::Replace, 4, "TRUE", "xTRUEx", "4:19 MeshData.hasValidTangents [bad-value]\n"},
    {"ColourOfNineDigits", kCube, Do::Replace, 16, "ff404040", "1ff404040",
     "16:11 MeshData.Material[0].Ambient [bad-value]\n"},
    {"ClosingBracketLost", kCube, Do::Replace, 6, " ]", "", "6:49 MeshData.MaxBoundingExtents [bad-value]\n"},
    {"MatrixRowSpoilt", kCube, Do::Replace, 26, "-1.0", "-1,0", "26:27 MeshData.Point[0].Orientation [bad-value]\n"},
    {"MatrixRowDropped", kCube, Do::Drop, 26, "", "", "27:2 MeshData.Point[0].Orientation [bad-value]\n"},
    {"MatrixRowWithoutItsBracket", kCube, Do::Replace, 25, "[ ", "",
     "25:5 MeshData.Point[0].Orientation [bad-value]\n"},
    {"LineBetweenMatrixRows", kCube, Do::Insert, 26, "", "\t\t\tExtra 1",
     "26:4 MeshData.Point[0].Extra [unknown-label]\n"},
    {"RecordBetweenMatrixRows", kCube, Do::Insert, 26, "", "\t\t\tExtra\r\n\t\t\t\tDeep 1",
     "26:4 MeshData.Point[0].Extra [unknown-label]\n"},
    {"NextFieldBetweenMatrixRows", kBlast, Do::Swap, 32, "", "",
     "32:3 ParticleSimulation.EmitterContents[0].RotateAboutForward [out-of-order]\n"},
    {"MatrixRowEmptied", kCube, Do::Replace, 26, "[ 0.000000 0.000000 -1.000000 ]", "",
     "26:5 MeshData.Point[0].Orientation [bad-value]\n"},
    {"BlankLineBetweenMatrixRows", kCube, Do::Insert, 26, "", "", "26:1 MeshData.Point[0] [unknown-label]\n"},
    {"TailOfALabelLine", kCube, Do::Replace, 9, "Material", "Material 1", "9:11 MeshData.Material[0] [bad-value]\n"},
    {"AnchorOutOfRange", kBlast, Do::Replace, 39, "4", "9",
     "39:19 ParticleSimulation.EmitterContents[0].BillboardAnchor [bad-value]\n"},
    {"OpeningQuoteLost", kCube, Do::Replace, 22, "\"Hook", "Hook", "22:14 MeshData.Point[0].DataString [bad-string]\n"},
    {"ClosingQuoteLost", kCube, Do::Replace, 22, "Top\"", "Top", "22:14 MeshData.Point[0].DataString [bad-string]\n"},
    {"BehindTheQuote", kCube, Do::Replace, 22, "Top\"", "Top\" x", "22:25 MeshData.Point[0].DataString [bad-value]\n"},
    {"BytesThatAreNoText", kCube, Do::Replace, 22, "Hook", "\xC3\xA9\xFF", "22:16 [bad-text]\n"},
    {"BitsAreRead", kCube, Do::Replace, 5, "0.866025", "0.87 Bits=1063105495", ""},

    // The end
    {"CutBehindALine", kCube, Do::Cut, 40, "", "", "41:1 MeshData.Vertex[0].U0 [missing-field]\n"},
    {"CutToTheHeader", kBlast, Do::Cut, 1, "", "", "2:1 ParticleSimulation [missing-field]\n"},
};

std::vector<std::string> LinesOf(const std::string& text) {
    std::vector<std::string> lines;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = text.find("\r\n", start);
        lines.push_back(text.substr(start, end - start));
        start = end + 2;
    }
    return lines;
}

std::string Apply(const Edit& edit) {
    std::vector<std::string> lines = LinesOf(ReadExample(edit.m_Example));
    const auto line = lines.begin() + static_cast<std::ptrdiff_t>(edit.m_Line) - 1;
    switch (edit.m_Do) {
    case Do::Replace:
        line->replace(line->rfind(edit.m_Old), std::string(edit.m_Old).size(), edit.m_New);
        break;
    case Do::Drop:
        lines.erase(line);
        break;
    case Do::Double:
        lines.insert(line, *line);
        break;
    case Do::Swap:
        std::swap(*line, *(line + 1));
        break;
    case Do::Insert:
        lines.insert(line, edit.m_New);
        break;
    case Do::Move: {
        const std::vector<std::string> moved(line, line + static_cast<std::ptrdiff_t>(edit.m_Count));
        lines.erase(line, line + static_cast<std::ptrdiff_t>(edit.m_Count));
        lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(edit.m_To) - 1, moved.begin(), moved.end());
        break;
    }
    case Do::Cut:
        lines.erase(line + 1, lines.end());
        break;
    }
    std::string text;
    for (const std::string& each : lines)
        text += each + "\r\n";
    return text;
}

// One mistake, one diagnostic, at its place.
TEST(TextEdits, EachIsFoundOnce) {
    for (const Edit& edit : kEdits)
        EXPECT_EQ(FindingsOf(LoadNamed(Apply(edit), edit.m_Example)), edit.m_Findings) << edit.m_Name;
}

// Whatever line a file is cut behind, what is missing is told once; and what stands in front of it can be read.
TEST(TextEdits, CutAnywhereIsFoundOnce) {
    for (const char* example : {kCube, kBlast, kPanels, kHull}) {
        const std::size_t lineCount = LinesOf(ReadExample(example)).size();
        for (std::size_t line = 1; line < lineCount; ++line) {
            const LoadedFile file = LoadNamed(Apply({"", example, Do::Cut, line, "", "", ""}), example);
            EXPECT_EQ(file.m_Log.GetAll().size(), 1u) << example << " cut behind line " << line << "\n"
                                                      << FindingsOf(file);
        }
    }
}

TEST(TextEdits, CutWithinALineIsFoundOnce) {
    for (const char* example : {kCube, kBlast, kPanels, kHull}) {
        const std::string text = ReadExample(example).substr(0, 3000);
        const std::size_t lastLine = text.rfind('\n', text.size() - 3); // its value may be shorter and still be one
        for (std::size_t size = text.find('\n') + 1; size < lastLine; size += 3) {
            const LoadedFile file = LoadNamed(text.substr(0, size), example);
            EXPECT_EQ(file.m_Log.GetAll().size(), 1u) << example << " cut to " << size << " bytes\n"
                                                      << FindingsOf(file);
        }
    }
}

std::string WithSpacesForTabs(std::string text) {
    for (std::size_t tab = text.find('\t'); tab != text.npos; tab = text.find('\t', tab))
        text.replace(tab, 1, "    ");
    return text;
}

// Tabs are for people: where they are gone, in the whole text or in a part of it, a slip costs no more.
TEST(TextEdits, EachIsFoundOnceWithoutTabs) {
    const Edit edits[] = {
        {"Misspelt", kBlast, Do::Replace, 3, "HasInfinite", "HasInfinit", ""},
        {"RecordMisspelt", kCube, Do::Replace, 45, "Vertex", "Vertxe", ""},
        {"FieldDropped", kCube, Do::Drop, 41, "", "", ""},
        {"FieldDoubled", kPanels, Do::Double, 13, "", "", ""},
        {"FieldsSwapped", kCube, Do::Swap, 10, "", "", ""},
        {"RecordLineDropped", kCube, Do::Drop, 28, "", "", ""},
        {"StateLineDropped", kPanels, Do::Drop, 58, "", "", ""},
        {"RecordLineDoubled", kCube, Do::Double, 45, "", "", ""},
        {"LineInAList", kCube, Do::Insert, 42, "", "Extra 1", ""},
        {"LineInFrontOfAll", kPanels, Do::Insert, 2, "", "Extra 1", ""},
        {"CountTooLarge", kCube, Do::Replace, 20, "2", "4", ""},
        {"CountTooSmall", kCube, Do::Replace, 35, "24", "20", ""},
        {"FieldMoved", kCube, Do::Move, 7, "", "", "", 13},
        {"ElementTooMany", kCube, Do::Insert, 61, "",
         "Triangle\r\niVertex0 1\r\niVertex1 1\r\niVertex2 1\r\niMaterial 0", ""},
    };
    for (const Edit& edit : edits) {
        const std::string text = Apply(edit);
        std::string flat = text;
        std::erase(flat, '\t');
        const std::size_t middle = text.find('\n', text.size() / 2) + 1;
        const std::string texts[] = {
            flat,
            flat + "\t\r\n", // a single tab says nothing about the others
            WithSpacesForTabs(text),
            WithSpacesForTabs(text.substr(0, middle)) + text.substr(middle),
        };
        for (const std::string& each : texts) {
            const LoadedFile file = LoadNamed(each, edit.m_Example);
            EXPECT_EQ(file.m_Log.GetAll().size(), 1u) << edit.m_Name << " " << (&each - texts) << "\n"
                                                      << FindingsOf(file);
        }
    }
}

// Fields are looked for by their label, so that one misspelt line costs one value.
TEST(TextEdits, OtherFieldsKeepTheirValues) {
    const Edit edit = {"", kCube, Do::Replace, 35, "NumVertices", "NumVertex", ""};
    const LoadedFile file = LoadNamed(Apply(edit), kCube);
    ASSERT_NE(file.m_Readable, nullptr);
    const MeshData& mesh = static_cast<const MeshObject&>(*file.m_Readable).m_Data;
    EXPECT_EQ(mesh.m_Vertices.GetSize(), 24);
    EXPECT_EQ(mesh.m_Triangles.GetSize(), 12);
    EXPECT_EQ(mesh.m_Triangles[11].m_iVertex2, 22);
}

} // namespace
} // namespace Corvid
