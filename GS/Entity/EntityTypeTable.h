#pragma once

#include <iterator>
#include <memory>

#include "Engine/String/EnumWords.h"
#include "GS/Entity/EntityType.h"
#include "GS/Entity/FleetDefs.h"
#include "GS/Entity/MissionDefs.h"
#include "GS/Entity/PlayerDefs.h"
#include "GS/Entity/ShipDefs.h"
#include "GS/Entity/SpaceBodyDefs.h"
#include "GS/Entity/StructureDefs.h"
#include "GS/Entity/WeaponDefs.h"

namespace Corvid {

struct EntityTypeRow {
    EnumWord m_Word;
    std::unique_ptr<EntityDef> (*m_Create)(); // null: the type has no class
    bool m_IsLayoutSettled;
};

template <class Def> std::unique_ptr<EntityDef> CreateEntityDef() {
    return std::make_unique<Def>();
}

template <class Def> constexpr EntityTypeRow RowOf(EnumWord word) {
    return {word, CreateEntityDef<Def>, Def::kIsLayoutSettled};
}

constexpr EntityTypeRow RowWithoutClass(EnumWord word) {
    return {word, nullptr, true};
}

// The entity types in the order of their values from 0: the word that files hold and the class of the definition.
inline constexpr EntityTypeRow kEntityTypes[] = {
    RowOf<AbilityDef>(u"Ability"),
    RowOf<BuffDef>(u"Buff"),
    RowOf<EmpireWindowNodeDef>(u"EmpireWindowNode"),
    RowOf<FighterDef>(u"Fighter"),
    RowOf<SquadDef>(u"Squad"),
    RowOf<DebrisDef>(u"Debris"),
    RowOf<WeaponDef>(u"Weapon"),
    RowOf<CannonShellDef>(u"CannonShell"),
    RowOf<CapitalShipDef>(u"CapitalShip"),
    RowOf<CosmeticDef>(u"Cosmetic"),
    RowOf<EntryVehicleDef>(u"EntryVehicle"),
    RowOf<FleetDef>(u"Fleet"),
    RowOf<FormationDef>(u"Formation"),
    RowOf<FrigateDef>(u"Frigate"),
    RowOf<Mission_AttackPlanetDef>(u"MissionAttackPlanet"),
    RowOf<Mission_CaptureResourcesDef>(u"MissionCaptureResources"),
    RowOf<Mission_ColonizeDef>(u"MissionColonize"),
    RowOf<Mission_DefendFlagshipDef>(u"MissionDefendFlagship"),
    RowOf<Mission_BuildStarBaseDef>(u"MissionBuildStarBase"),
    RowOf<Mission_BuildMinesDef>(u"MissionBuildMines"),
    RowOf<Mission_ExploreDef>(u"MissionExplore"),
    RowOf<Mission_RaidDef>(u"MissionRaid"),
    RowOf<PipCloudDef>(u"PipCloud"),
    RowOf<PlanetDef>(u"Planet"),
    RowOf<PlanetBonusDef>(u"PlanetBonus"),
    RowOf<PlanetConnectionDef>(u"PlanetConnection"),
    RowOf<PlanetModuleOrbit_HangarDefenseDef>(u"PlanetModuleHangarDefense"),
    RowOf<PlanetModuleOrbit_ShipFactoryDef>(u"PlanetModuleShipFactory"),
    RowOf<PlanetModuleOrbit_StandardDef>(u"PlanetModuleStandard"),
    RowOf<PlanetModuleOrbit_TradePortDef>(u"PlanetModuleTradePort"),
    RowOf<PlanetModuleOrbit_RefineryDef>(u"PlanetModuleRefinery"),
    RowWithoutClass(u"PlanetModuleSpaceMine"),
    RowWithoutClass(u"PlanetModuleUserAbilityModule"),
    RowOf<PlanetModuleOrbit_WeaponDefenseDef>(u"PlanetModuleWeaponDefense"),
    RowOf<PlayerDef>(u"Player"),
    RowOf<QuestDef>(u"Quest"),
    RowOf<ResearchSubjectDef>(u"ResearchSubject"),
    RowOf<ResourceAsteroidDef>(u"ResourceAsteroid"),
    RowOf<SpaceMineDef>(u"SpaceMine"),
    RowOf<StarDef>(u"Star"),
    RowOf<StarBaseDef>(u"StarBase"),
    RowOf<StarBaseUpgradeDef>(u"StarBaseUpgrade"),
    RowOf<TitanDef>(u"Titan"),
    RowOf<TitanUpgradeDef>(u"TitanUpgrade"),
    RowOf<Mission_FosterRelationshipsDef>(u"MissionFosterRelationships"),
    RowOf<TriggerDef>(u"Trigger"),
};

inline constexpr int kEntityTypeCount = static_cast<int>(std::size(kEntityTypes));

struct EntityTypeWords {
    EnumWord m_Words[kEntityTypeCount]{};

    constexpr EntityTypeWords() {
        for (int i = 0; i < kEntityTypeCount; ++i)
            m_Words[i] = kEntityTypes[i].m_Word;
    }
};

inline constexpr EntityTypeWords kEntityTypeWords;

template <> struct EnumWords<EntityType> {
    static constexpr const EnumWord (&Words)[kEntityTypeCount] = kEntityTypeWords.m_Words;
};

// The row of a type; null outside the table.
const EntityTypeRow* FindEntityType(EntityType type);

// A new definition of the type's class, with its identity set; null when the type has no class.
std::unique_ptr<EntityDef> CreateEntityDef(EntityType type, const EntityDefName& name);

} // namespace Corvid
