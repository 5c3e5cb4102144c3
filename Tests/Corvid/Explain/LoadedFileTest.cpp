#include <gtest/gtest.h>

#include <string>

#include "Tests/Corvid/Explain/ExplainFixture.h"

namespace Corvid {
namespace {

// Which kind a file is taken for, and what is said of it.
TEST(LoadedFile, KindComesFromOptionThenContentOfTextThenExtension) {
    const std::string mesh = ReadExample("Mesh/cube.mesh");
    const std::string meshBinary = ReadExample("Mesh/cube-binary.mesh");
    struct Case {
        const char* m_Name;
        const std::string& m_Bytes;
        const char* m_File;
        std::optional<Kind> m_Given;
        std::optional<Kind> m_Kind;
        const char* m_FirstFinding;
    };
    const std::string junk = "BIN\n\1\2\3";
    const auto binaryEntity = [](const std::string& type, const std::string& rest) {
        std::string bytes = "BIN\n" + std::string{static_cast<char>(type.size()), '\0', '\0', '\0'};
        for (const char letter : type)
            bytes += {letter, '\0'};
        return bytes + rest;
    };
    const std::string trigger = binaryEntity("Trigger", ""), more = binaryEntity("Trigger", "x");
    const std::string ability = binaryEntity("Ability", "x");
    const std::string strange = "TXT\r\nSomething 1\r\n";
    const Case kCases[] = {
        {"Extension", mesh, "a.MESH", {}, Kind::Mesh, ""},
        {"ContentOfText", mesh, "a.dat", {}, Kind::Mesh, ""},
        {"ContentWins", mesh, "a.particle", {}, Kind::Mesh, "[kind-differs]"},
        {"OptionWins", mesh, "a.mesh", Kind::Brushes, Kind::Brushes, "2:1 onlyLoadOnDemand [missing-field]"},
        {"ContentOfBinary", meshBinary, "a", {}, Kind::Mesh, ""},
        {"ExtensionOfBinary", meshBinary, "a.brushes", {}, Kind::Brushes, "@"},
        {"BinaryEntity", trigger, "a", {}, Kind::Entity, ""},
        {"BinaryEntityOfTypeWithoutLayout", ability, "a", {}, Kind::Entity, "@4 entityType [no-layout]"},
        {"BinaryThatIsNotReadWhole", more, "a", {}, {}, "[unknown-kind]"},
        {"BinaryOfNoKind", junk, "a", {}, {}, "[unknown-kind]"},
        {"TextOfNoKind", strange, "a", {}, {}, "[unknown-kind]"},
    };
    for (const Case& each : kCases) {
        LoadOptions options;
        options.m_Kind = each.m_Given;
        const LoadedFile file = LoadNamed(each.m_Bytes, each.m_File, options);
        EXPECT_EQ(file.m_Kind, each.m_Kind) << each.m_Name;
        EXPECT_EQ(FindingsOf(file).rfind(each.m_FirstFinding, 0), 0u) << each.m_Name << ": " << FindingsOf(file);
    }
}

TEST(LoadedFile, NothingIsMadeOfWhatHasNoObject) {
    const std::string kFiles[] = {"",
                                  "hello",
                                  "TXT\r\nentityType \"Nonesuch\"\r\n",
                                  "TXT\r\nentityType \"\"\r\n",
                                  "TXT\r\nentityType \"Ability\"\r\n",
                                  "TXT\r\nentityType \"PlanetModuleSpaceMine\"\r\n"};
    for (const std::string& bytes : kFiles) {
        const LoadedFile file = LoadNamed(bytes, "a.entity");
        EXPECT_TRUE(file.m_Log.HasErrors()) << bytes;
        EXPECT_EQ(file.m_Object, nullptr) << bytes;
    }
}

TEST(LoadedFile, Utf16IsReadLikeUtf8) {
    const std::u16string units = ToUtf16(ReadExample("Mesh/cube.mesh").substr(3));
    const std::string bytes = "\xFF\xFE" + std::string(reinterpret_cast<const char*>(units.data()), 2 * units.size());
    EXPECT_EQ(FindingsOf(LoadNamed(bytes, "a.mesh")), "");
    std::string spoilt = bytes;
    spoilt[2 + 2 * units.find(u"NumVertices")] = 'M';
    EXPECT_EQ(FindingsOf(LoadNamed(spoilt, "a.mesh")), "35:2 MeshData.NumVertices [missing-field]\n");
}

// The texts that come out, with exact floats, bring every value back.
TEST(LoadedFile, ExactTextBringsEveryFloatBack) {
    std::string bytes = ReadExample("Mesh/cube-binary.mesh");
    for (std::size_t i = 13; i < 37; ++i) // the extents
        bytes[i] = static_cast<char>(i * 37 % 120);
    const LoadedFile file = LoadNamed(bytes, "a.mesh");
    ASSERT_EQ(FindingsOf(file), "");
    const std::string text = *SaveToBytes(*file.m_Object, ArchiveFormat::Text, FloatPrecision::Exact);
    const LoadedFile again = LoadNamed(text, "a.mesh");
    EXPECT_EQ(FindingsOf(again), "");
    EXPECT_EQ(*SaveToBytes(*again.m_Object, ArchiveFormat::Binary, FloatPrecision::Exact), bytes);
}

} // namespace
} // namespace Corvid
