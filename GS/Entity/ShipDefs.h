#pragma once

#include "GS/Entity/EntityDef.h"
#include "GS/Entity/SharedBlocks.h"

namespace Corvid {

// Ships, and what flies like them.

class FighterDef final : public Record<FighterDef, EntityDef> {
public:
    static constexpr bool kIsLayoutSettled = false;

    static void Fields(auto& self, auto& fields) {
        fields.Block(self.m_Render);
        fields.Block(self.m_UserInterface);
        fields.Block(self.m_RigidBody);
    }

private:
    IRenderDefinition m_Render;
    IUserInterfaceDef m_UserInterface;
    IRigidBodyDefinition m_RigidBody;
};

class SquadDef final : public Record<SquadDef, EntityDef> {
public:
    static constexpr bool kIsLayoutSettled = false;

    static void Fields(auto& self, auto& fields) { fields.Block(self.m_Render); }

private:
    IRenderDefinition m_Render;
};

class FrigateDef final : public Record<FrigateDef, EntityDef> {
public:
    static constexpr bool kIsLayoutSettled = false;

    static void Fields(auto& self, auto& fields) {
        fields.Block(self.m_Render);
        fields.Block(self.m_UserInterface);
        fields.Block(self.m_Shield);
        fields.Block(self.m_RigidBody);
        fields.Block(self.m_FleetMember);
    }

private:
    IRenderDefinition m_Render;
    IUserInterfaceDef m_UserInterface;
    IShieldDefinition m_Shield;
    IRigidBodyDefinition m_RigidBody;
    IFleetMemberDefinition m_FleetMember;
};

class CapitalShipDef final : public Record<CapitalShipDef, EntityDef> {
public:
    static constexpr bool kIsLayoutSettled = false;

    static void Fields(auto& self, auto& fields) {
        fields.Block(self.m_Render);
        fields.Block(self.m_UserInterface);
        fields.Block(self.m_Shield);
        fields.Block(self.m_RigidBody);
        fields.Block(self.m_FleetMember);
    }

private:
    IRenderDefinition m_Render;
    IUserInterfaceDef m_UserInterface;
    IShieldDefinition m_Shield;
    IRigidBodyDefinition m_RigidBody;
    IFleetMemberDefinition m_FleetMember;
};

class TitanDef final : public Record<TitanDef, EntityDef> {
public:
    static constexpr bool kIsLayoutSettled = false;

    static void Fields(auto& self, auto& fields) {
        fields.Block(self.m_Render);
        fields.Block(self.m_UserInterface);
        fields.Block(self.m_Shield);
        fields.Block(self.m_RigidBody);
        fields.Block(self.m_FleetMember);
    }

private:
    IRenderDefinition m_Render;
    IUserInterfaceDef m_UserInterface;
    IShieldDefinition m_Shield;
    IRigidBodyDefinition m_RigidBody;
    IFleetMemberDefinition m_FleetMember;
};

class EntryVehicleDef final : public Record<EntryVehicleDef, EntityDef> {
public:
    static constexpr bool kIsLayoutSettled = false;

    static void Fields(auto& self, auto& fields) {
        fields.Block(self.m_Render);
        fields.Block(self.m_RigidBody);
    }

private:
    IRenderDefinition m_Render;
    IRigidBodyDefinition m_RigidBody;
};

class CosmeticDef final : public Record<CosmeticDef, EntityDef> {
public:
    static constexpr bool kIsLayoutSettled = false;

    static void Fields(auto& self, auto& fields) {
        fields.Block(self.m_Render);
        fields.Block(self.m_UserInterface);
        fields.Block(self.m_Shield);
        fields.Block(self.m_RigidBody);
        fields.Block(self.m_FleetMember);
    }

private:
    IRenderDefinition m_Render;
    IUserInterfaceDef m_UserInterface;
    IShieldDefinition m_Shield;
    IRigidBodyDefinition m_RigidBody;
    IFleetMemberDefinition m_FleetMember;
};

} // namespace Corvid
