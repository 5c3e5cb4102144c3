#pragma once

#include "GS/Entity/EntityDef.h"
#include "GS/Entity/SharedBlocks.h"

namespace Corvid {

// Star bases and the modules in orbit around a planet.

class StarBaseDef final : public Record<StarBaseDef, EntityDef> {
public:
    static constexpr bool kIsLayoutSettled = false;

    static void Fields(auto& self, auto& fields) {
        fields.Block(self.m_Render);
        fields.Block(self.m_UserInterface);
        fields.Block(self.m_Shield);
        fields.Block(self.m_RigidBody);
    }

private:
    IRenderDefinition m_Render;
    IUserInterfaceDef m_UserInterface;
    IShieldDefinition m_Shield;
    IRigidBodyDefinition m_RigidBody;
};

class PlanetModuleOrbit_HangarDefenseDef final : public Record<PlanetModuleOrbit_HangarDefenseDef, EntityDef> {
public:
    static constexpr bool kIsLayoutSettled = false;

    static void Fields(auto&, auto&) {}
};

class PlanetModuleOrbit_ShipFactoryDef final : public Record<PlanetModuleOrbit_ShipFactoryDef, EntityDef> {
public:
    static constexpr bool kIsLayoutSettled = false;

    static void Fields(auto&, auto&) {}
};

class PlanetModuleOrbit_StandardDef final : public Record<PlanetModuleOrbit_StandardDef, EntityDef> {
public:
    static constexpr bool kIsLayoutSettled = false;

    static void Fields(auto& self, auto& fields) {
        fields.Block(self.m_Render);
        fields.Block(self.m_UserInterface);
        fields.Block(self.m_Shield);
    }

private:
    IRenderDefinition m_Render;
    IUserInterfaceDef m_UserInterface;
    IShieldDefinition m_Shield;
};

class PlanetModuleOrbit_TradePortDef final : public Record<PlanetModuleOrbit_TradePortDef, EntityDef> {
public:
    static constexpr bool kIsLayoutSettled = false;

    static void Fields(auto&, auto&) {}
};

class PlanetModuleOrbit_RefineryDef final : public Record<PlanetModuleOrbit_RefineryDef, EntityDef> {
public:
    static constexpr bool kIsLayoutSettled = false;

    static void Fields(auto&, auto&) {}
};

class PlanetModuleOrbit_WeaponDefenseDef final : public Record<PlanetModuleOrbit_WeaponDefenseDef, EntityDef> {
public:
    static constexpr bool kIsLayoutSettled = false;

    static void Fields(auto&, auto&) {}
};

} // namespace Corvid
