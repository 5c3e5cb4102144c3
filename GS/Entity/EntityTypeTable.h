#pragma once

#include <iterator>
#include <memory>

#include "Engine/String/EnumWords.h"
#include "GS/Entity/BlockDef.h"
#include "GS/Entity/EntityType.h"
#include "GS/Entity/FleetBlocks.h"
#include "GS/Entity/IDebrisDef.h"
#include "GS/Entity/IMissionDefinition.h"
#include "GS/Entity/ISpaceMineDef.h"
#include "GS/Entity/SharedBlocks.h"

namespace Corvid {

struct EntityTypeRow {
    EnumWord m_Word;
    std::unique_ptr<EntityDef> (*m_Create)(); // null: the type has no definition
    bool m_IsLayoutSettled;                   // false: files hold more than the blocks, in places that are not known
};

template <class... Blocks> std::unique_ptr<EntityDef> CreateBlockDef() {
    return std::make_unique<BlockDef<Blocks...>>();
}

template <class... Blocks> constexpr EntityTypeRow Settled(EnumWord word) {
    return {word, CreateBlockDef<Blocks...>, true};
}

template <class... Blocks> constexpr EntityTypeRow Incomplete(EnumWord word) {
    return {word, CreateBlockDef<Blocks...>, false};
}

constexpr EntityTypeRow WithoutDefinition(EnumWord word) {
    return {word, nullptr, true};
}

// The entity types in the order of their values from 0: the word that files hold, and the blocks of the definition.
inline constexpr EntityTypeRow kEntityTypes[] = {
    Incomplete<>(u"Ability"),
    Incomplete<>(u"Buff"),
    Incomplete<>(u"EmpireWindowNode"),
    Incomplete<IRenderDefinition, IUserInterfaceDef, IRigidBodyDefinition>(u"Fighter"),
    Incomplete<IRenderDefinition>(u"Squad"),
    Settled<IDebrisDef, IRenderDefinition>(u"Debris"),
    Settled<>(u"Weapon"),
    Incomplete<IRenderDefinition, IUserInterfaceDef>(u"CannonShell"),
    Incomplete<IRenderDefinition, IUserInterfaceDef, IShieldDefinition, IRigidBodyDefinition, IFleetMemberDefinition>(
        u"CapitalShip"),
    Incomplete<IRenderDefinition, IUserInterfaceDef, IShieldDefinition, IRigidBodyDefinition, IFleetMemberDefinition>(
        u"Cosmetic"),
    Incomplete<IRenderDefinition, IRigidBodyDefinition>(u"EntryVehicle"),
    Settled<IFleetDefinition>(u"Fleet"),
    Settled<IFormationDefinition>(u"Formation"),
    Incomplete<IRenderDefinition, IUserInterfaceDef, IShieldDefinition, IRigidBodyDefinition, IFleetMemberDefinition>(
        u"Frigate"),
    Settled<IMissionDefinition>(u"MissionAttackPlanet"),
    Settled<IMissionDefinition>(u"MissionCaptureResources"),
    Settled<IMissionDefinition>(u"MissionColonize"),
    Settled<IMissionDefinition>(u"MissionDefendFlagship"),
    Settled<IMissionDefinition>(u"MissionBuildStarBase"),
    Settled<IMissionDefinition>(u"MissionBuildMines"),
    Settled<IMissionDefinition>(u"MissionExplore"),
    Settled<IMissionDefinition>(u"MissionRaid"),
    Incomplete<>(u"PipCloud"),
    Incomplete<IRenderDefinition, IShieldDefinition, IOrbitBodyDefinition>(u"Planet"),
    Incomplete<>(u"PlanetBonus"),
    Settled<>(u"PlanetConnection"),
    Incomplete<>(u"PlanetModuleHangarDefense"),
    Incomplete<>(u"PlanetModuleShipFactory"),
    Incomplete<IRenderDefinition, IUserInterfaceDef, IShieldDefinition>(u"PlanetModuleStandard"),
    Incomplete<>(u"PlanetModuleTradePort"),
    Incomplete<>(u"PlanetModuleRefinery"),
    WithoutDefinition(u"PlanetModuleSpaceMine"),
    WithoutDefinition(u"PlanetModuleUserAbilityModule"),
    Incomplete<>(u"PlanetModuleWeaponDefense"),
    Incomplete<>(u"Player"),
    Incomplete<>(u"Quest"),
    Incomplete<IHUDDefinition>(u"ResearchSubject"),
    Incomplete<IRenderDefinition, IUserInterfaceDef>(u"ResourceAsteroid"),
    Incomplete<IRenderDefinition, IUserInterfaceDef, IRigidBodyDefinition, ISpaceMineDef>(u"SpaceMine"),
    Incomplete<IRenderDefinition, IUserInterfaceDef, IOrbitBodyDefinition>(u"Star"),
    Incomplete<IRenderDefinition, IUserInterfaceDef, IShieldDefinition, IRigidBodyDefinition>(u"StarBase"),
    Incomplete<>(u"StarBaseUpgrade"),
    Incomplete<IRenderDefinition, IUserInterfaceDef, IShieldDefinition, IRigidBodyDefinition, IFleetMemberDefinition>(
        u"Titan"),
    Incomplete<>(u"TitanUpgrade"),
    Settled<IMissionDefinition>(u"MissionFosterRelationships"),
    Settled<>(u"Trigger"),
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

// A new definition of the type, with its identity set; null when the type has none.
std::unique_ptr<EntityDef> CreateEntityDef(EntityType type, const EntityDefName& name);

} // namespace Corvid
