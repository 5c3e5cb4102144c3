#pragma once

#include "GS/Entity/BlockDef.h"
#include "GS/Entity/SharedBlocks.h"

namespace Corvid {

class IDebrisDef final : public Record<IDebrisDef> {
public:
    static void Fields(auto& self, auto& fields) {
        fields.Value(u"averageLifetime", self.m_AverageLifetime);
        fields.Value(u"lifetimeVariancePerc", self.m_LifetimeVariancePerc);
        fields.Value(u"minLinearSpeed", self.m_MinLinearSpeed);
        fields.Value(u"maxLinearSpeed", self.m_MaxLinearSpeed);
        fields.Value(u"minAngularSpeed", self.m_MinAngularSpeed);
        fields.Value(u"maxAngularSpeed", self.m_MaxAngularSpeed);
        fields.Value(u"dragRate", self.m_DragRate);
    }

private:
    float m_AverageLifetime = 0.0f;
    float m_LifetimeVariancePerc = 0.0f;
    float m_MinLinearSpeed = 0.0f;
    float m_MaxLinearSpeed = 0.0f;
    float m_MinAngularSpeed = 0.0f;
    float m_MaxAngularSpeed = 0.0f;
    float m_DragRate = 0.0f;
};

using DebrisDef = BlockDef<IDebrisDef, IRenderDefinition>;

} // namespace Corvid
