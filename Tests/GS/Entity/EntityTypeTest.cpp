#include <iterator>
#include <string>

#include "GS/Entity/EntityTypeTable.h"
#include "Tests/Support/ExpectWords.h"

namespace Corvid {
namespace {

constexpr const char16_t* kWords[] = {u"Ability",
                                      u"Buff",
                                      u"EmpireWindowNode",
                                      u"Fighter",
                                      u"Squad",
                                      u"Debris",
                                      u"Weapon",
                                      u"CannonShell",
                                      u"CapitalShip",
                                      u"Cosmetic",
                                      u"EntryVehicle",
                                      u"Fleet",
                                      u"Formation",
                                      u"Frigate",
                                      u"MissionAttackPlanet",
                                      u"MissionCaptureResources",
                                      u"MissionColonize",
                                      u"MissionDefendFlagship",
                                      u"MissionBuildStarBase",
                                      u"MissionBuildMines",
                                      u"MissionExplore",
                                      u"MissionRaid",
                                      u"PipCloud",
                                      u"Planet",
                                      u"PlanetBonus",
                                      u"PlanetConnection",
                                      u"PlanetModuleHangarDefense",
                                      u"PlanetModuleShipFactory",
                                      u"PlanetModuleStandard",
                                      u"PlanetModuleTradePort",
                                      u"PlanetModuleRefinery",
                                      u"PlanetModuleSpaceMine",
                                      u"PlanetModuleUserAbilityModule",
                                      u"PlanetModuleWeaponDefense",
                                      u"Player",
                                      u"Quest",
                                      u"ResearchSubject",
                                      u"ResourceAsteroid",
                                      u"SpaceMine",
                                      u"Star",
                                      u"StarBase",
                                      u"StarBaseUpgrade",
                                      u"Titan",
                                      u"TitanUpgrade",
                                      u"MissionFosterRelationships",
                                      u"Trigger"};

TEST(EntityTypeTest, Words) {
    ASSERT_EQ(std::size(kWords), 46u);
    ExpectWords<EntityType>({std::begin(kWords), std::end(kWords)});
    ExpectWords<MissionType>({u"AttackPlanet", u"CaptureResources", u"Colonize", u"BuildStarBase", u"BuildMines",
                              u"Explore", u"Raid", u"FosterRelationships", u"DefendFlagship"});
    ExpectWords<CohesionRange>({u"None", u"Near", u"Far"});
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
