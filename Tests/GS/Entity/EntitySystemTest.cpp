#include "GS/Entity/EntitySystem.h"

#include <string>

#include "Tests/Engine/File/TemporaryFolder.h"
#include "Tests/GS/Entity/EntityFixture.h"

namespace Corvid {
namespace {

class EntitySystemTest : public EntityFixture {};

TEST_F(EntitySystemTest, DefinitionsAreNamedAfterTheirFile) {
    const std::u16string longest(79, u'n');
    const std::u16string tooLong(80, u'n');
    const struct {
        std::u16string path;
        std::u16string name;
        bool isLoaded;
    } kCases[] = {
        {u"Frigate_A.entity", u"Frigate_A", true},
        {u"C:\\Defs/v1.2\\Frigate_A.old.entity", u"Frigate_A.old", true},
        {u"Frigate_A", u"Frigate_A", true},
        {u"defs.d/" + longest + u".entity", longest, true},
        {longest, longest, true},
        {tooLong, u"", false},
        {u"defs/" + tooLong + u".entity", u"", false},
        {u".entity", u"", true},
    };
    for (const auto& c : kCases) {
        const auto definition = LoadDefinition("TXT\nentityType \"Trigger\"\n", c.path);
        ASSERT_EQ(definition != nullptr, c.isLoaded) << ::testing::PrintToString(c.path);
        EXPECT_EQ(m_Reports.Take(), c.isLoaded ? "" : "EntityDefName is too long: " + std::string(80, 'n') + "\n")
            << ::testing::PrintToString(c.path);
        if (definition != nullptr) {
            EXPECT_EQ(std::u16string(definition->GetName().GetText()), c.name);
        }
    }
}

TEST_F(EntitySystemTest, TypesWithoutClassLoadAsNothing) {
    const struct {
        const char* line;
        const char* report; // the start of the only one
    } kCases[] = {
        {"entityType \"PlanetModuleSpaceMine\"\n", ""},
        {"entityType \"PlanetModuleUserAbilityModule\"\n", ""},
        {"entityType \"Invalid\"\n", ""},
        {"entityType \"trigger\"\n", "Failed to convert 'trigger' to an enum value.\n"},
        {"entityType \"Trigger \"\n", "Failed to convert 'Trigger ' to an enum value.\n"},
        {"entityType \"\"\n", "Failed to convert '' to an enum value.\n"},
        {"entitytype \"Trigger\"\n", "Text FileArchive missing Label.\n"},
        {"", "Text FileArchive missing Label.\n"},
    };
    TemporaryFolder folder;
    for (const auto& c : kCases) {
        folder.Put("a.entity", "TXT\n" + std::string(c.line) + "mass 1\n");
        EXPECT_EQ(m_Entities.LoadDefinition(m_Archives, folder / "a.entity"), nullptr) << c.line;
        EXPECT_EQ(m_Reports.GetTexts().size(), *c.report == 0 ? 0u : 1u) << c.line;
        EXPECT_EQ(m_Reports.Take().find(c.report), 0u) << c.line;
    }
}

TEST_F(EntitySystemTest, FilesAreLoadedAndSaved) {
    TemporaryFolder folder;
    folder.Put("a.entity", "TXT\nentityType \"Fleet\"\ndefaultCohesionRange \"Near\"\n");
    const auto definition = m_Entities.LoadDefinition(m_Archives, folder / "a.entity");
    ASSERT_NE(definition, nullptr);
    m_Entities.SaveDefinition(m_Archives, *definition, folder / "b", ArchiveFormat::Binary);
    EXPECT_EQ(folder.Get("b"), std::string("BIN\n\5\0\0\0F\0l\0e\0e\0t\0\4\0\0\0N\0e\0a\0r\0", 30));
    EXPECT_EQ(m_Reports.Take(), "");

    m_Entities.SaveDefinition(m_Archives, *definition, folder / "missing/b", ArchiveFormat::Text);
    EXPECT_EQ(m_Reports.Count("Failed to Open File: '"), 1);
    EXPECT_EQ(m_Entities.LoadDefinition(m_Archives, folder / "missing/b"), nullptr);
    EXPECT_EQ(m_Reports.Count("Could not detect if Archive File is Binary or Text: "), 1);
}

// Known blocks at the place of others would be nonsense, and the rest be lost: the file stays as it is.
TEST_F(EntitySystemTest, IncompleteLayoutsAreLoadedOnlyFromWhatIsKnown) {
    const std::string text = "TXT\nentityType \"Squad\"\n", known = "minShadow 1\nmaxShadow 2\n";
    const std::string binary("BIN\n\5\0\0\0S\0q\0u\0a\0d\0\0\0\x80\x3F\0\0\0\x40", 26);
    const struct {
        const char* name;
        std::string file;
        bool isLoaded;
    } kCases[] = {
        {"Known", text + known, true},
        {"NothingInIt", text, true},
        {"MoreBehind", text + known + "squadSize 3\n", false},
        {"OtherFieldsFirst", text + "squadSize 3\n" + known, false},
        {"SettledWithMore", "TXT\nentityType \"Trigger\"\nmore 1\n", true},
        {"BinaryKnown", binary, true},
        {"BinaryMoreBehind", binary + '\1', false},
        {"BinaryEndsWithinAValue", binary.substr(0, 25), false},
        {"BinaryEndsBetweenValues", binary.substr(0, 22), true},
        {"BinaryEndsWithinAString",
         std::string("BIN\n\6\0\0\0P\0l\0a\0n\0e\0t\0", 20) + std::string(8, '\0') + "\1\0\0", false},
    };
    const TemporaryFolder folder;
    for (const auto& c : kCases) {
        folder.Put("Squad_A.entity", c.file);
        EXPECT_EQ(m_Entities.LoadDefinition(m_Archives, folder / "Squad_A.entity") != nullptr, c.isLoaded) << c.name;
        EXPECT_EQ(
            m_Reports.Count("The definition 'Squad_A' is not written: its layout is incomplete, and the file holds "
                            "more than is known.\n"),
            c.isLoaded ? 0 : 1)
            << c.name;
        EXPECT_LE(m_Reports.Count("Unread input"), 1) << c.name;
        m_Reports.Take();
    }
}

TEST_F(EntitySystemTest, ChecksumsOfEveryOpenedArchiveAddUp) {
    const std::string fleet = "TXT\nentityType \"Fleet\"\ndefaultCohesionRange \"Far\"\n";
    LoadDefinition(fleet);
    const std::uint32_t ofFleet = m_Entities.GetChecksumTotal();
    EXPECT_NE(ofFleet, 0u);
    LoadDefinition(fleet);
    EXPECT_EQ(m_Entities.GetChecksumTotal(), 2 * ofFleet);

    // Without a definition too; but not without an archive.
    std::uint32_t total = m_Entities.GetChecksumTotal();
    for (const char* lines : {"TXT\nentityType \"fleet\"\n", "TXT\nentityType \"PlanetModuleSpaceMine\"\n"}) {
        LoadDefinition(lines);
        EXPECT_NE(m_Entities.GetChecksumTotal(), total) << lines;
        total = m_Entities.GetChecksumTotal();
    }
    LoadDefinition("TXT\nentityType \"Trigger\"\n", std::u16string(80, u'n'));
    EXPECT_NE(m_Entities.GetChecksumTotal(), total);
    total = m_Entities.GetChecksumTotal();
    LoadDefinition("entityType \"Trigger\"\n");
    m_Entities.LoadDefinition(m_Archives, u"");
    EXPECT_EQ(m_Entities.GetChecksumTotal(), total);
}

} // namespace
} // namespace Corvid
