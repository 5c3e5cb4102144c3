#pragma once

#include "GS/Entity/EntityDef.h"
#include "GS/Entity/SharedBlocks.h"

namespace Corvid {

// What players are, do, learn and meet.

class AbilityDef final : public Record<AbilityDef, EntityDef> {
public:
    static constexpr bool kIsLayoutSettled = false;

    static void Fields(auto&, auto&) {}
};

class BuffDef final : public Record<BuffDef, EntityDef> {
public:
    static constexpr bool kIsLayoutSettled = false;

    static void Fields(auto&, auto&) {}
};

class EmpireWindowNodeDef final : public Record<EmpireWindowNodeDef, EntityDef> {
public:
    static constexpr bool kIsLayoutSettled = false;

    static void Fields(auto&, auto&) {}
};

class PlayerDef final : public Record<PlayerDef, EntityDef> {
public:
    static constexpr bool kIsLayoutSettled = false;

    static void Fields(auto&, auto&) {}
};

class QuestDef final : public Record<QuestDef, EntityDef> {
public:
    static constexpr bool kIsLayoutSettled = false;

    static void Fields(auto&, auto&) {}
};

class ResearchSubjectDef final : public Record<ResearchSubjectDef, EntityDef> {
public:
    static constexpr bool kIsLayoutSettled = false;

    static void Fields(auto& self, auto& fields) { fields.Block(self.m_HUD); }

private:
    IHUDDefinition m_HUD;
};

class StarBaseUpgradeDef final : public Record<StarBaseUpgradeDef, EntityDef> {
public:
    static constexpr bool kIsLayoutSettled = false;

    static void Fields(auto&, auto&) {}
};

class TitanUpgradeDef final : public Record<TitanUpgradeDef, EntityDef> {
public:
    static constexpr bool kIsLayoutSettled = false;

    static void Fields(auto&, auto&) {}
};

class TriggerDef final : public Record<TriggerDef, EntityDef> {
public:
    static void Fields(auto&, auto&) {}
};

} // namespace Corvid
