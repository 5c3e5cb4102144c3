#pragma once

#include <cstdint>

#include "Engine/Archive/Record.h"
#include "Engine/Window/BrushRef.h"

namespace Corvid {

// The blocks that definitions of many kinds are made of.

class IRenderDefinition final : public Record<IRenderDefinition> {
public:
    static void Fields(auto& self, auto& fields) {
        fields.Value(u"minShadow", self.m_MinShadow);
        fields.Value(u"maxShadow", self.m_MaxShadow);
    }

private:
    float m_MinShadow = 0.0f;
    float m_MaxShadow = 0.0f;
};

class IUserInterfaceDef final : public Record<IUserInterfaceDef> {
public:
    static void Fields(auto& self, auto& fields) { fields.Value(u"minZoomDistanceMult", self.m_MinZoomDistanceMult); }

private:
    float m_MinZoomDistanceMult = 0.0f;
};

class IShieldDefinition final : public Record<IShieldDefinition> {
public:
    static void Fields(auto& self, auto& fields) {
        fields.Value(u"ShieldMeshName", self.m_ShieldMeshName, AssetKind::Mesh);
        fields.Value(u"renderShield", self.m_RenderShield);
    }

private:
    FixedString<256> m_ShieldMeshName;
    bool m_RenderShield = false;
};

class IRigidBodyDefinition final : public Record<IRigidBodyDefinition> {
public:
    static void Fields(auto& self, auto& fields) { fields.Value(u"mass", self.m_Mass); }

private:
    float m_Mass = 0.0f;
};

class IFleetMemberDefinition final : public Record<IFleetMemberDefinition> {
public:
    static void Fields(auto& self, auto& fields) { fields.Value(u"autoJoinFleetDefault", self.m_AutoJoinFleetDefault); }

private:
    bool m_AutoJoinFleetDefault = false;
};

class IOrbitBodyDefinition final : public Record<IOrbitBodyDefinition> {
public:
    static void Fields(auto& self, auto& fields) {
        fields.Value(u"moveAreaRadius", self.m_MoveAreaRadius);
        fields.Value(u"hyperspaceExitRadius", self.m_HyperspaceExitRadius);
        fields.Value(u"isWormhole", self.m_IsWormhole);
        fields.Value(u"maxStarBaseCountPerPlayer", self.m_MaxStarBaseCountPerPlayer);
        fields.Value(u"maxSpaceMineCountPerPlayer", self.m_MaxSpaceMineCountPerPlayer);
    }

private:
    float m_MoveAreaRadius = 0.0f;
    float m_HyperspaceExitRadius = 0.0f;
    bool m_IsWormhole = false;
    std::int32_t m_MaxStarBaseCountPerPlayer = 0;
    std::int32_t m_MaxSpaceMineCountPerPlayer = 0;
};

class IHUDDefinition final : public Record<IHUDDefinition> {
public:
    static void Fields(auto& self, auto& fields) {
        fields.Value(u"hudIcon", self.m_HudIcon);
        fields.Value(u"smallHudIcon", self.m_SmallHudIcon);
        fields.Value(u"infoCardIcon", self.m_InfoCardIcon);
    }

private:
    BrushRef m_HudIcon;
    BrushRef m_SmallHudIcon;
    BrushRef m_InfoCardIcon;
};

class Price final : public Record<Price> {
public:
    static void Fields(auto& self, auto& fields) {
        fields.Value(u"credits", self.m_Credits);
        fields.Value(u"metal", self.m_Metal);
        fields.Value(u"crystal", self.m_Crystal);
    }

private:
    float m_Credits = 0.0f;
    float m_Metal = 0.0f;
    float m_Crystal = 0.0f;
};

} // namespace Corvid
