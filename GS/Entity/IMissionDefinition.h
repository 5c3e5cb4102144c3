#pragma once

#include "GS/Entity/BlockDef.h"

namespace Corvid {

// In an order of its own, not that of the entity types.
enum class MissionType {
    Invalid = -1,
    AttackPlanet,
    CaptureResources,
    Colonize,
    BuildStarBase,
    BuildMines,
    Explore,
    Raid,
    FosterRelationships,
    DefendFlagship
};

template <> struct EnumWords<MissionType> {
    static constexpr EnumWord Words[] = {u"AttackPlanet",  u"CaptureResources",    u"Colonize",
                                         u"BuildStarBase", u"BuildMines",          u"Explore",
                                         u"Raid",          u"FosterRelationships", u"DefendFlagship"};
};

class IMissionDefinition final : public Record<IMissionDefinition> {
public:
    static void Fields(auto& self, auto& fields) {
        fields.Value(u"missionType", self.m_MissionType); // nothing holds it against the entity type
    }

private:
    MissionType m_MissionType = MissionType::Invalid;
};

// All missions have one layout.
using MissionDef = BlockDef<IMissionDefinition>;

} // namespace Corvid
