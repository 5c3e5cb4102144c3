#include "Recast/Program.h"

#include <cstdint>
#include <sstream>
#include <thread>

#include "Engine/File/NativePath.h"
#include "Engine/String/Unicode.h"
#include "Tests/Recast/ProgramFixture.h"

namespace Corvid {
namespace {

using ProgramTest = ProgramFixture;

TEST_F(ProgramTest, FewerThanThreeOperandsPrintUsage) {
    const Result usage = {-1, "Usage: recast type src dest [format]\n"
                              "\t-type can be mesh, particle, brushes, entity,saveGame\n"
                              "\t-format can be txt, bin. defaults to bin and bin only for saveGame\n"};
    EXPECT_EQ(Run({}), usage);
    EXPECT_EQ(Run({u"mesh"}), usage);
    EXPECT_EQ(Run({u"mesh", u"a"}), usage);
    EXPECT_EQ(Run({u"Mesh", u"a"}), usage);
}

TEST_F(ProgramTest, UnknownTypeShowsItsAddress) {
    for (const std::u16string type :
         {u"Mesh", u"meshes", u"mes", u" mesh", u"", u"PARTICLE", u"Brushes", u"ENTITY", u"savegame", u"SaveGame"}) {
        m_Folder.Put("a", "TXT\n");
        const std::vector<std::u16string> words = {type, u"a", u"b", u"txt"};
        std::ostringstream expected;
        expected << "0x" << std::hex << reinterpret_cast<std::uintptr_t>(words[0].c_str())
                 << " is an unknown convert type";
        EXPECT_EQ(Run(words), (Result{-1, expected.str()})) << ToUtf8(type);
        EXPECT_EQ(m_Folder.List(), std::set<std::string>{"a"});
    }
}

TEST_F(ProgramTest, OnlyTheFormatWordTxtGivesText) {
    struct Case {
        std::vector<std::u16string> words;
        bool isText;
    };
    const Case kCases[] = {
        {{}, false},       {{u"bin"}, false},         {{u"txt"}, true},
        {{u"TXT"}, false}, {{u"text"}, false},        {{u"tx"}, false},
        {{u""}, false},    {{u" txt"}, false},        {{u"txt "}, false},
        {{u"Txt"}, false}, {{u"bin", u"txt"}, false}, {{u"txt", u"bin", u"mesh"}, true},
    };
    for (const ExampleKind& kind : kExampleKinds) {
        m_Folder.Put("a", ReadExample(kind.m_Example));
        for (const Case& row : kCases) {
            std::vector<std::u16string> words = {kind.m_Type, u"a", u"b"};
            words.insert(words.end(), row.words.begin(), row.words.end());
            EXPECT_EQ(Convert(words), "");
            EXPECT_EQ(m_Folder.Get("b").substr(0, 4), row.isText ? "\xEF\xBB\xBFT" : "BIN\n")
                << ToUtf8(kind.m_Type) << ' ' << (row.words.empty() ? "" : ToUtf8(row.words[0]));
        }
    }
}

TEST_F(ProgramTest, EveryKindConvertsBothWays) {
    for (const ExampleKind& kind : kExampleKinds) {
        const std::string text = ReadExample(kind.m_Example);
        m_Folder.Put("text", text);
        EXPECT_EQ(Convert({kind.m_Type, u"text", u"binary"}), "");
        EXPECT_EQ(Convert({kind.m_Type, u"binary", u"again", u"txt"}), "");
        EXPECT_EQ(m_Folder.Get("again"), text) << ToUtf8(kind.m_Type);
    }
}

TEST_F(ProgramTest, ParticleConversionDropsFolders) {
    const std::string text = ReadExample("Particle/ReactorBlast.particle");
    const std::string name = "\"Spark_Streak.dds\"";
    ASSERT_NE(text.find(name), text.npos);
    m_Folder.Put("a", std::string(text).replace(text.find(name), 1, "\"C:\\Art/Sparks\\"));
    EXPECT_EQ(Convert({u"particle", u"a", u"b", u"txt"}), "");
    EXPECT_EQ(m_Folder.Get("b"), text);
}

TEST_F(ProgramTest, SourceMayBeTheDestinationByAnyName) {
    std::filesystem::create_symlink("a", "link");
    for (const ExampleKind& kind : kExampleKinds) {
        const std::string text = ReadExample(kind.m_Example);
        m_Folder.Put("text", text);
        Convert({kind.m_Type, u"text", u"binary"});
        for (const char* other : {"a", "./a", "link", "hard"}) {
            m_Folder.Put("a", text);
            std::filesystem::remove("hard");
            std::filesystem::create_hard_link("a", "hard");
            EXPECT_EQ(Convert({kind.m_Type, u"a", ToUtf16(other)}), "");
            EXPECT_EQ(m_Folder.Get(other), m_Folder.Get("binary")) << ToUtf8(kind.m_Type) << other;
            EXPECT_EQ(Convert({kind.m_Type, ToUtf16(other), u"a", u"txt"}), "");
            EXPECT_EQ(m_Folder.Get("a"), text) << ToUtf8(kind.m_Type) << other;
        }
    }
}

TEST_F(ProgramTest, FailuresAreReportedInOrderAndEndWell) {
    const auto unopened = [](std::string path) { return "Failed to Open File: '" + path + "'\n"; };
    const auto undetected = [](std::string path) {
        return "Could not detect if Archive File is Binary or Text: " + path + '\n';
    };
    const auto noMesh = [](std::string path) {
        return "Failed to find data file '" + path + ".mesh'. (SubPath = )\nCould not find Mesh: " + path + '\n';
    };
    const std::string archiveCheck = "Assertion failed: file != NULL (Engine/Archive/FileArchiveSystem, line N)\n";
    const std::string copyCheck = "Assertion failed: file != NULL (Recast/SaveGameCopy, line N)\n";
    const std::string shortRead = "Failed to Read File 'BI'. desired read bytes = 1, actual read bytes = 0.\n";
    struct Case {
        const char16_t* type;
        const char16_t* source;
        const char16_t* destination;
        std::string output;
        bool isWritten;
    };
    const Case kCases[] = {
        {u"mesh", u"none", u"b", noMesh("none"), true},
        {u"particle", u"none", u"b", unopened("none") + undetected("none"), true},
        {u"brushes", u"none", u"b", unopened("none") + undetected("none"), true},
        {u"entity", u"none", u"b", unopened("none") + undetected("none"), false},
        {u"saveGame", u"none", u"b", unopened("none"), false},
        {u"mesh", u"folder", u"b", noMesh("folder"), true},
        {u"particle", u"folder", u"b", unopened("folder") + undetected("folder"), true},
        {u"saveGame", u"folder", u"b", unopened("folder"), false},
        {u"mesh", u"junk", u"b", undetected("junk"), true},
        {u"brushes", u"junk", u"b", undetected("junk"), true},
        {u"entity", u"junk", u"b", undetected("junk"), false},
        {u"particle", u"BI", u"b", shortRead + shortRead + undetected("BI"), true},
        {u"mesh", u"none", u"no/b", noMesh("none") + unopened("no/b") + archiveCheck, false},
        {u"particle", u"junk", u"folder", undetected("junk") + unopened("folder") + archiveCheck, false},
        {u"brushes", u"", u"", unopened("") + undetected("") + unopened("") + archiveCheck, false},
        {u"entity", u"trigger", u"no/b", unopened("no/b") + archiveCheck, false},
        {u"entity", u"none", u"no/b", unopened("none") + undetected("none"), false},
        {u"saveGame", u"junk", u"no/b", unopened("no/b") + copyCheck, false},
        {u"saveGame", u"junk", u"folder", unopened("folder") + copyCheck, false},
        {u"saveGame", u"none", u"folder", unopened("none"), false},
    };
    std::filesystem::create_directory("folder");
    m_Folder.Put("junk", "neither of them");
    m_Folder.Put("BI", "BI");
    m_Folder.Put("trigger", "TXT\nentityType \"Trigger\"\n");
    for (const Case& row : kCases) {
        m_Folder.Put("b", "old");
        EXPECT_EQ(Convert({row.type, row.source, row.destination}), row.output)
            << ToUtf8(row.type) << ' ' << ToUtf8(row.source) << ' ' << ToUtf8(row.destination);
        EXPECT_EQ(m_Folder.Get("b").starts_with("BIN\n"), row.isWritten) << ToUtf8(row.type) << ToUtf8(row.source);
        EXPECT_EQ(m_Folder.Get("b") == "old", !row.isWritten);
    }
    EXPECT_EQ(m_Folder.List(), (std::set<std::string>{"BI", "b", "folder", "junk", "trigger"}));
}

// Misses, failed checks and what is left over, each on lines of its own.
TEST_F(ProgramTest, ReportsStandInTheOrderOfTheFile) {
    m_Folder.Put("a", "TXT\nMeshData\n\tmaxDiffuseMipLevel low\n\tBoundingRadius 1\n\tMaxBoundingExtents [ 1 1 ]\n"
                      "\tNumMaterials 1\n\tMaterial\n\t\tDiffuseTextureFileName \"x.dds\n\tNumPoints 0\n");
    const std::string output = Convert({u"mesh", u"a", u"b"});
    const auto missing = [](const char* label, int number, const char* line) {
        return std::string("Text FileArchive missing Label.\n\nFile: a\nLabel: ") + label +
               "\nLine Number:" + std::to_string(number) + "\nLine Contents:" + line + '\n';
    };
    const std::string check = "Assertion failed: result == ";
    const char* const place = " (Engine/Archive/TextFileArchive, line N)\n";
    const char* const points = "\tNumPoints 0\n";
    std::string expected = check + "1" + place;
    expected += missing("hasValidTangents", 3, "\tBoundingRadius 1\n") + check + "3" + place;
    expected += missing("MinBoundingExtents", 6, "\tNumMaterials 1\n");
    expected += "\" not found wrapping data string: x.dds\n\nFileName: a\nLine #: 9\n"
                "Line Content: \t\tDiffuseTextureFileName \"x.dds\n";
    expected += missing("SelfIlluminationTextureFileName", 10, points);
    EXPECT_EQ(output.substr(0, expected.size()), expected);
    EXPECT_EQ(m_Folder.Get("b").substr(0, 4), "BIN\n");
}

TEST_F(ProgramTest, LongPathsConvertWhole) {
    std::u16string dots;
    for (int i = 0; i < 300; ++i)
        dots += u"./";
    const std::string check = "Assertion failed: GetLength( source ) < destination.m_BufferSize "
                              "(Engine/String/StringLibrary, line N)\n";
    const std::size_t kRecordings[] = {1, 1, 2, 1, 0}; // how often a kind keeps a path, cut to what it has room for
    for (std::size_t i = 0; i < std::size(kExampleKinds); ++i) {
        const ExampleKind& kind = kExampleKinds[i];
        const std::string text = ReadExample(kind.m_Example);
        m_Folder.Put("a", text);
        std::string expected;
        while (expected.size() < kRecordings[i] * check.size())
            expected += check;
        EXPECT_EQ(Convert({kind.m_Type, dots + u"a", dots + u"b", u"txt"}), expected);
        EXPECT_EQ(m_Folder.Get("b"), text) << ToUtf8(kind.m_Type);
    }
}

TEST_F(ProgramTest, NamesMayBeAny) {
    const std::string text = ReadExample("Mesh/cube.mesh");
    std::filesystem::create_directory(std::filesystem::path(u"Gr\u00F6\u00DFe"));
    std::ofstream(std::filesystem::path(u"Gr\u00F6\u00DFe/\u8266\U0001F680"), std::ios::binary) << text;
    EXPECT_EQ(Convert({u"mesh", u"Gr\u00F6\u00DFe/\u8266\U0001F680", u"-\u00E9 \U0001F680", u"txt"}), "");
    EXPECT_TRUE(std::filesystem::exists(std::filesystem::path(u"-\u00E9 \U0001F680")));
    EXPECT_EQ(Convert({u"saveGame", u"\u8266\U0001F680", u"b"}),
              "Failed to Open File: '\xE8\x89\xA6\xF0\x9F\x9A\x80'\n");
#ifndef _WIN32
    m_Folder.Put("\xFF\xE9", text);
    EXPECT_EQ(Convert({u"mesh", PathFromNative("\xFF\xE9"), PathFromNative("\x80"), u"txt"}), "");
    EXPECT_EQ(m_Folder.Get("\x80"), text);
    EXPECT_EQ(Convert({u"saveGame", PathFromNative("no\xFE"), u"b"}), "Failed to Open File: 'no\xEF\xBF\xBD'\n");
#endif
}

TEST_F(ProgramTest, RunsOnTwoThreadsDoNotMeet) {
    m_Folder.Put("a", "TXT\nonlyLoadOnDemand TRUE\nbrushCount 1\nbrush\n\tcontent \"none\"\n\tfileName \"x\"\n");
    m_Folder.Put("b", ReadExample("Mesh/cube.mesh").substr(0, 4000));
    const std::vector<std::u16string> commands[] = {{u"brushes", u"a", u"a2"}, {u"mesh", u"b", u"b2"}};
    const Result expected[] = {Run(commands[0]), Run(commands[1])};
    EXPECT_NE(expected[0].m_Output, "");
    EXPECT_NE(expected[1].m_Output, "");
    int differences[] = {0, 0};
    const auto repeat = [&](int which) {
        for (int i = 0; i < 50; ++i)
            differences[which] += Run(commands[which]) != expected[which];
    };
    std::thread other(repeat, 1);
    repeat(0);
    other.join();
    EXPECT_EQ(differences[0] + differences[1], 0);
}

} // namespace
} // namespace Corvid
