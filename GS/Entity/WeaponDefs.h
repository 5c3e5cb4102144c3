#pragma once

#include "GS/Entity/EntityDef.h"
#include "GS/Entity/ISpaceMineDef.h"
#include "GS/Entity/SharedBlocks.h"

namespace Corvid {

// Weapons, and what they fire or lay.

class WeaponDef final : public Record<WeaponDef, EntityDef> {
public:
    static void Fields(auto&, auto&) {}
};

class CannonShellDef final : public Record<CannonShellDef, EntityDef> {
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

class SpaceMineDef final : public Record<SpaceMineDef, EntityDef> {
public:
    static constexpr bool kIsLayoutSettled = false;

    static void Fields(auto& self, auto& fields) {
        fields.Block(self.m_Render);
        fields.Block(self.m_UserInterface);
        fields.Block(self.m_RigidBody);
        fields.Block(self.m_SpaceMine);
    }

private:
    IRenderDefinition m_Render;
    IUserInterfaceDef m_UserInterface;
    IRigidBodyDefinition m_RigidBody;
    ISpaceMineDef m_SpaceMine;
};

} // namespace Corvid
