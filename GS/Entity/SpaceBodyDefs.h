#pragma once

#include "GS/Entity/EntityDef.h"
#include "GS/Entity/IDebrisDef.h"
#include "GS/Entity/SharedBlocks.h"

namespace Corvid {

// What the space of a galaxy is made of.

class StarDef final : public Record<StarDef, EntityDef> {
public:
    static constexpr bool kIsLayoutSettled = false;

    static void Fields(auto& self, auto& fields) {
        fields.Block(self.m_Render);
        fields.Block(self.m_UserInterface);
        fields.Block(self.m_OrbitBody);
    }

private:
    IRenderDefinition m_Render;
    IUserInterfaceDef m_UserInterface;
    IOrbitBodyDefinition m_OrbitBody;
};

class PlanetDef final : public Record<PlanetDef, EntityDef> {
public:
    static constexpr bool kIsLayoutSettled = false;

    static void Fields(auto& self, auto& fields) {
        fields.Block(self.m_Render);
        fields.Block(self.m_Shield);
        fields.Block(self.m_OrbitBody);
    }

private:
    IRenderDefinition m_Render;
    IShieldDefinition m_Shield;
    IOrbitBodyDefinition m_OrbitBody;
};

class PlanetBonusDef final : public Record<PlanetBonusDef, EntityDef> {
public:
    static constexpr bool kIsLayoutSettled = false;

    static void Fields(auto&, auto&) {}
};

class PlanetConnectionDef final : public Record<PlanetConnectionDef, EntityDef> {
public:
    static void Fields(auto&, auto&) {}
};

class ResourceAsteroidDef final : public Record<ResourceAsteroidDef, EntityDef> {
public:
    static constexpr bool kIsLayoutSettled = false;

    static void Fields(auto& self, auto& fields) {
        fields.Block(self.m_Render);
        fields.Block(self.m_UserInterface);
    }

private:
    IRenderDefinition m_Render;
    IUserInterfaceDef m_UserInterface;
};

class DebrisDef final : public Record<DebrisDef, EntityDef> {
public:
    static void Fields(auto& self, auto& fields) {
        fields.Block(self.m_Debris);
        fields.Block(self.m_Render);
    }

private:
    IDebrisDef m_Debris;
    IRenderDefinition m_Render;
};

class PipCloudDef final : public Record<PipCloudDef, EntityDef> {
public:
    static constexpr bool kIsLayoutSettled = false;

    static void Fields(auto&, auto&) {}
};

} // namespace Corvid
