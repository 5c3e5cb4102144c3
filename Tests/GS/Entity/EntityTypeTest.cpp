#include <string>

#include "GS/Entity/EntityTypeTable.h"
#include "Tests/Support/ExpectWords.h"

namespace Corvid {
namespace {

TEST(EntityTypeTest, Words) {
    ExpectWords<EntityType>(u"Ability Buff EmpireWindowNode Fighter Squad Debris Weapon CannonShell CapitalShip "
                            u"Cosmetic EntryVehicle Fleet Formation Frigate MissionAttackPlanet "
                            u"MissionCaptureResources MissionColonize MissionDefendFlagship MissionBuildStarBase "
                            u"MissionBuildMines MissionExplore MissionRaid PipCloud Planet PlanetBonus "
                            u"PlanetConnection PlanetModuleHangarDefense PlanetModuleShipFactory PlanetModuleStandard "
                            u"PlanetModuleTradePort PlanetModuleRefinery PlanetModuleSpaceMine "
                            u"PlanetModuleUserAbilityModule PlanetModuleWeaponDefense Player Quest ResearchSubject "
                            u"ResourceAsteroid SpaceMine Star StarBase StarBaseUpgrade Titan TitanUpgrade "
                            u"MissionFosterRelationships Trigger");
    ExpectWords<MissionType>(u"AttackPlanet CaptureResources Colonize BuildStarBase BuildMines Explore Raid "
                             u"FosterRelationships DefendFlagship");
    ExpectWords<CohesionRange>(u"None Near Far");
}

TEST(EntityTypeTest, EveryTypeButTwoHasADefinition) {
    ReportLog reports;
    for (int value = -2; value <= 47; ++value) {
        const auto type = static_cast<EntityType>(value);
        const std::unique_ptr<EntityDef> definition = CreateEntityDef(type, EntityDefName(u"Thing"));
        const bool isKnown = value >= 0 && value < 46 && value != 31 && value != 32;
        ASSERT_EQ(definition != nullptr, isKnown) << value;
        if (!isKnown)
            continue;
        EXPECT_EQ(definition->GetType(), type);
        EXPECT_EQ(std::u16string(definition->GetName().GetText()), u"Thing");
        EXPECT_EQ(definition->GetName().GetIndex(), -1);
    }
    EXPECT_EQ(reports.Take(), "");
}

TEST(EntityTypeTest, NamedDefinitionsAreThoseOfTheirTypes) {
    const auto create = [](int value) { return CreateEntityDef(static_cast<EntityType>(value), EntityDefName(u"A")); };
    EXPECT_NE(dynamic_cast<DebrisDef*>(create(5).get()), nullptr);
    EXPECT_NE(dynamic_cast<FleetDef*>(create(11).get()), nullptr);
    EXPECT_NE(dynamic_cast<FormationDef*>(create(12).get()), nullptr);
    for (const int value : {14, 15, 16, 17, 18, 19, 20, 21, 44})
        EXPECT_NE(dynamic_cast<MissionDef*>(create(value).get()), nullptr) << value;
}

} // namespace
} // namespace Corvid
