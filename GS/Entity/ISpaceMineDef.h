#pragma once

#include "GS/Entity/SharedBlocks.h"

namespace Corvid {

class ISpaceMineDef final : public Record<ISpaceMineDef> {
public:
    static void Fields(auto& self, auto& fields) {
        fields.Value(u"spawnActivationDelay", self.m_SpawnActivationDelay);
        fields.Value(u"targetStartFollowRange", self.m_TargetStartFollowRange);
        fields.Value(u"targetMaxFollowRange", self.m_TargetMaxFollowRange);
        fields.Value(u"nameStringID", self.m_NameStringID);
        fields.Value(u"scuttleValue", self.m_ScuttleValue);
        fields.Value(u"baseScuttleTime", self.m_BaseScuttleTime);
    }

private:
    float m_SpawnActivationDelay = 0.0f;
    float m_TargetStartFollowRange = 0.0f;
    float m_TargetMaxFollowRange = 0.0f;
    FixedString<256> m_NameStringID; // the key of the localized name
    Price m_ScuttleValue;
    float m_BaseScuttleTime = 0.0f;
};

} // namespace Corvid
