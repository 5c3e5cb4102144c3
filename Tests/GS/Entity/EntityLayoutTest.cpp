#include <set>
#include <string>

#include "GS/Entity/EntityTypeTable.h"
#include "Tests/GS/Entity/EntityFixture.h"
#include "Tests/Support/SpelledFile.h"

namespace Corvid {
namespace {

// The blocks as files spell them.
void Render(SpelledFile& file) {
    file.Float("minShadow", 0.25f).Float("maxShadow", 0.75f);
}
void UserInterface(SpelledFile& file) {
    file.Float("minZoomDistanceMult", 1.5f);
}
void Shield(SpelledFile& file) {
    file.String("ShieldMeshName", "Shield_A").Bool("renderShield", true);
}
void RigidBody(SpelledFile& file) {
    file.Float("mass", 1200.0f);
}
void FleetMember(SpelledFile& file) {
    file.Bool("autoJoinFleetDefault", true);
}
void OrbitBody(SpelledFile& file) {
    file.Float("moveAreaRadius", 9000.0f).Float("hyperspaceExitRadius", -0.5f).Bool("isWormhole", true);
    file.Int("maxStarBaseCountPerPlayer", 4).Int("maxSpaceMineCountPerPlayer", -1);
}
void HUD(SpelledFile& file) {
    file.String("hudIcon", "Icon").String("smallHudIcon", "").String("infoCardIcon", std::string(99, 'i'));
}
void SpaceMine(SpelledFile& file) {
    file.Float("spawnActivationDelay", 1.0f).Float("targetStartFollowRange", 2.0f).Float("targetMaxFollowRange", 3.0f);
    file.String("nameStringID", "IDS_MINE");
    file.Begin("scuttleValue").Float("credits", 4.0f).Float("metal", 5.0f).Float("crystal", 6.0f).End();
    file.Float("baseScuttleTime", 7.0f);
}
void Debris(SpelledFile& file) {
    file.Float("averageLifetime", 30.5f).Float("lifetimeVariancePerc", 0.25f);
    file.Float("minLinearSpeed", 1.0f).Float("maxLinearSpeed", 2.0f);
    file.Float("minAngularSpeed", 3.0f).Float("maxAngularSpeed", 4.0f).Float("dragRate", 5.0f);
}
void Mission(SpelledFile& file) {
    file.String("missionType", "DefendFlagship");
}
void Fleet(SpelledFile& file) {
    file.String("defaultCohesionRange", "Far");
}

struct Layout {
    const char* m_Type;
    std::vector<void (*)(SpelledFile&)> m_Blocks;
};

const Layout kSettled[] = {
    {"Weapon", {}},
    {"Formation", {}},
    {"PlanetConnection", {}},
    {"Trigger", {}},
    {"Fleet", {Fleet}},
    {"MissionAttackPlanet", {Mission}},
    {"MissionCaptureResources", {Mission}},
    {"MissionColonize", {Mission}},
    {"MissionDefendFlagship", {Mission}},
    {"MissionBuildStarBase", {Mission}},
    {"MissionBuildMines", {Mission}},
    {"MissionExplore", {Mission}},
    {"MissionRaid", {Mission}},
    {"MissionFosterRelationships", {Mission}},
    {"Debris", {Debris, Render}},
};

const Layout kIncomplete[] = {
    {"Ability", {}},
    {"Buff", {}},
    {"EmpireWindowNode", {}},
    {"Fighter", {Render, UserInterface, RigidBody}},
    {"Squad", {Render}},
    {"CannonShell", {Render, UserInterface}},
    {"CapitalShip", {Render, UserInterface, Shield, RigidBody, FleetMember}},
    {"Cosmetic", {Render, UserInterface, Shield, RigidBody, FleetMember}},
    {"EntryVehicle", {Render, RigidBody}},
    {"Frigate", {Render, UserInterface, Shield, RigidBody, FleetMember}},
    {"PipCloud", {}},
    {"Planet", {Render, Shield, OrbitBody}},
    {"PlanetBonus", {}},
    {"PlanetModuleHangarDefense", {}},
    {"PlanetModuleShipFactory", {}},
    {"PlanetModuleStandard", {Render, UserInterface, Shield}},
    {"PlanetModuleTradePort", {}},
    {"PlanetModuleRefinery", {}},
    {"PlanetModuleWeaponDefense", {}},
    {"Player", {}},
    {"Quest", {}},
    {"ResearchSubject", {HUD}},
    {"ResourceAsteroid", {Render, UserInterface}},
    {"SpaceMine", {Render, UserInterface, RigidBody, SpaceMine}},
    {"Star", {Render, UserInterface, OrbitBody}},
    {"StarBase", {Render, UserInterface, Shield, RigidBody}},
    {"StarBaseUpgrade", {}},
    {"Titan", {Render, UserInterface, Shield, RigidBody, FleetMember}},
    {"TitanUpgrade", {}},
};

class EntityLayoutTest : public EntityFixture {
protected:
    void ExpectFixedPoints(const Layout& layout, const std::string& report) {
        SpelledFile file;
        file.String("entityType", layout.m_Type);
        for (const auto block : layout.m_Blocks)
            block(file);
        for (const std::string& source : {file.GetText(), file.GetBinary()}) {
            for (const ArchiveFormat format : {ArchiveFormat::Text, ArchiveFormat::Binary}) {
                EXPECT_EQ(Convert(source, format), format == ArchiveFormat::Text ? file.GetText() : file.GetBinary())
                    << layout.m_Type;
                EXPECT_EQ(m_Reports.Take(), report) << layout.m_Type;
            }
        }

        // What stands behind the known fields is not dropped in silence.
        Convert(file.GetText() + "beyond 1\r\n", ArchiveFormat::Text);
        EXPECT_EQ(m_Reports.Count("Unread input"), 1) << layout.m_Type;
        Convert(file.GetBinary() + '\1', ArchiveFormat::Text);
        EXPECT_EQ(m_Reports.Count("Unread input"), 2) << layout.m_Type;
        m_Reports.Take();
    }
};

TEST_F(EntityLayoutTest, SettledLayoutsAreFixedPointsInBothEncodings) {
    for (const Layout& layout : kSettled)
        ExpectFixedPoints(layout, "");
}

TEST_F(EntityLayoutTest, IncompleteLayoutsKeepTheirBlocksAndSaySo) {
    for (const Layout& layout : kIncomplete)
        ExpectFixedPoints(layout, "The layout of entity type '" + std::string(layout.m_Type) +
                                      "' is incomplete: only its known fields are converted, and they may "
                                      "stand at another place and so be wrong.\n");
    EXPECT_EQ(std::size(kSettled) + std::size(kIncomplete) + 2, static_cast<std::size_t>(kEntityTypeCount));
}

TEST_F(EntityLayoutTest, FilesHoldTheseBytes) {
    EXPECT_EQ(Convert("TXT\nentityType \"Fleet\"\ndefaultCohesionRange \"Far\"\n", ArchiveFormat::Binary),
              std::string("BIN\n\5\0\0\0F\0l\0e\0e\0t\0\3\0\0\0F\0a\0r\0", 28));
    EXPECT_EQ(Convert(std::string("BIN\n\5\0\0\0S\0q\0u\0a\0d\0\0\0\0\x3F\0\0\x80\xBF", 26), ArchiveFormat::Text),
              "\xEF\xBB\xBFTXT\r\nentityType \"Squad\"\r\nminShadow 0.500000\r\nmaxShadow -1.000000\r\n");
}

TEST_F(EntityLayoutTest, WordsThatAreNoneAreSavedAsInvalid) {
    const struct {
        const char* name;
        const char* type;
        const char* line;
        const char* saved;
        const char* report; // the start of the only one
    } kCases[] = {
        {"OtherCase", "MissionRaid", "missionType \"raid\"\r\n", "missionType \"Invalid\"\r\n",
         "Failed to convert 'raid' to an enum value.\n"},
        {"WordOfTheEntityType", "MissionRaid", "missionType \"MissionRaid\"\r\n", "missionType \"Invalid\"\r\n",
         "Failed to convert 'MissionRaid' to an enum value.\n"},
        {"OtherMission", "MissionRaid", "missionType \"Explore\"\r\n", "missionType \"Explore\"\r\n", ""},
        {"Invalid", "MissionRaid", "missionType \"Invalid\"\r\n", "missionType \"Invalid\"\r\n", ""},
        {"Missing", "MissionRaid", "", "missionType \"Invalid\"\r\n", "Text FileArchive missing Label.\n"},
        {"FleetOtherCase", "Fleet", "defaultCohesionRange \"far\"\r\n", "defaultCohesionRange \"Invalid\"\r\n",
         "Failed to convert 'far' to an enum value.\n"},
        {"FleetMissing", "Fleet", "", "defaultCohesionRange \"Invalid\"\r\n", "Text FileArchive missing Label.\n"},
    };
    for (const auto& c : kCases) {
        const std::string start = std::string(kTextHeader) + "entityType \"" + c.type + "\"\r\n";
        EXPECT_EQ(Convert(start + c.line, ArchiveFormat::Text), start + c.saved) << c.name;
        EXPECT_EQ(m_Reports.GetTexts().size(), *c.report == 0 ? 0u : 1u) << c.name;
        EXPECT_EQ(m_Reports.Take().find(c.report), 0u) << c.name;
    }
}

TEST_F(EntityLayoutTest, MissingFieldsAreWrittenAsZero) {
    const std::string converted = Convert("TXT\nentityType \"Planet\"\nisWormhole TRUE\n", ArchiveFormat::Text);
    EXPECT_EQ(converted, std::string(kTextHeader) +
                             "entityType \"Planet\"\r\nminShadow 0.000000\r\nmaxShadow 0.000000\r\n"
                             "ShieldMeshName \"\"\r\nrenderShield FALSE\r\nmoveAreaRadius 0.000000\r\n"
                             "hyperspaceExitRadius 0.000000\r\nisWormhole TRUE\r\nmaxStarBaseCountPerPlayer 0\r\n"
                             "maxSpaceMineCountPerPlayer 0\r\n");
    EXPECT_EQ(m_Reports.Count("missing Label"), 8);
    EXPECT_EQ(m_Reports.Count("is incomplete"), 1);
}

// Capacities count the terminator.
TEST_F(EntityLayoutTest, StringsAreCutAtTheirCapacity) {
    const struct {
        const char* type;
        const char* label;
        std::size_t capacity;
    } kCases[] = {
        {"PlanetModuleStandard", "ShieldMeshName", 256},
        {"SpaceMine", "nameStringID", 256},
        {"ResearchSubject", "smallHudIcon", 100},
    };
    for (const auto& c : kCases) {
        for (const std::size_t length : {c.capacity - 1, c.capacity}) {
            const std::string line = std::string(c.label) + " \"" + std::string(length, 's') + "\"\n";
            const std::string saved =
                Convert("TXT\nentityType \"" + std::string(c.type) + "\"\n" + line, ArchiveFormat::Text);
            EXPECT_NE(saved.find(" \"" + std::string(c.capacity - 1, 's') + "\"\r\n"), saved.npos) << c.label;
            EXPECT_EQ(m_Reports.Count("numCharsCopied < bufferSize"), length < c.capacity ? 0 : 1) << c.label;
            m_Reports.Take();
        }
    }
}

// A name that stands alone: no definition that is known holds one.
TEST_F(EntityLayoutTest, DefinitionNamesAreOneLine) {
    const std::string longest(EntityDefName::kCapacity - 1, 'n');
    for (const std::string& text : {std::string("Frigate_A"), longest, longest + "n"}) {
        EntityDefName name;
        LoadWith("TXT\nship \"" + text + "\"\n", [&](FileArchive& archive) { name.Load(archive, u"ship"); });
        EXPECT_EQ(SaveWith(ArchiveFormat::Text, [&](FileArchive& archive) { name.Save(archive, u"ship"); }),
                  std::string(kTextHeader) + "ship \"" + text.substr(0, 79) + "\"\r\n");
        EXPECT_EQ(m_Reports.Count("numCharsCopied < bufferSize"), text.size() < 80 ? 0 : 1);
    }
}

TEST_F(EntityLayoutTest, EveryCutLoadsOrIsRefused) {
    SpelledFile file;
    file.String("entityType", "SpaceMine");
    for (const auto block : {Render, UserInterface, RigidBody, SpaceMine})
        block(file);
    for (const std::string& bytes : {file.GetText(), file.GetBinary()}) {
        for (std::size_t length = 0; length < bytes.size(); ++length) {
            const std::string once = Convert(bytes.substr(0, length), ArchiveFormat::Binary);
            EXPECT_EQ(once.empty(), m_Reports.Count("is incomplete") == 0) << length;
            if (!once.empty()) {
                EXPECT_EQ(Convert(once, ArchiveFormat::Binary), once) << length;
            }
            m_Reports.Take();
        }
    }
}

} // namespace
} // namespace Corvid
