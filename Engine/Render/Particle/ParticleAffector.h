#pragma once

#include "Engine/Archive/Record.h"
#include "Engine/DataStructures/FixedArray.h"
#include "Engine/DataStructures/FixedVector.h"
#include "Engine/Math/Color.h"
#include "Engine/Math/Vector.h"
#include "Engine/Render/Particle/AffectorType.h"
#include "Engine/Render/Particle/AttachedEmitterName.h"
#include "Engine/String/FixedString.h"

namespace Corvid {

class ParticleSimulationDefinition;

// What every affector has; the kinds add what they do to the particles of the emitters that they are attached to.
class ParticleAffector : public Record<ParticleAffector> {
public:
    static constexpr int kEmitterSlots = 32;

    virtual ~ParticleAffector() = default;

    static void Fields(auto& self, auto& fields) {
        fields.Value(u"Name", self.m_Name);
        fields.Value(u"Enabled", self.m_Enabled);
        fields.Value(u"StartTime", self.m_StartTime);
        fields.Value(u"HasInfiniteLifeTime", self.m_HasInfiniteLifeTime);
        fields.Value(u"TotalLifeTime", self.m_TotalLifeTime);
        fields.Value(u"UseYoungParticleAffectThreshold", self.m_UseYoungParticleAffectThreshold);
        fields.Value(u"YoungParticleAffectThreshold", self.m_YoungParticleAffectThreshold);
        fields.Value(u"UseOldParticleAffectThreshold", self.m_UseOldParticleAffectThreshold);
        fields.Value(u"OldParticleAffectThreshold", self.m_OldParticleAffectThreshold);
        fields.Value(u"AffectAttachedParticles", self.m_AffectAttachedParticles);
        fields.List(u"numAttachedEmitters", u"attachedEmitterName", self.m_AttachedEmitterNames);
        fields.AfterLoad(self, [](auto& affector) { affector.ResolveAttachments(); });
    }

    AffectorType GetType() const { return m_Type; }

    // Flags the emitters of the owner whose name is one of the attached names.
    void ResolveAttachments();
    bool IsAttachedTo(int emitterSlot) const { return m_AttachedEmitters[emitterSlot]; }

protected:
    ParticleAffector(AffectorType type, const ParticleSimulationDefinition& owner) : m_Type(type), m_Owner(owner) {}

private:
    bool HasAttachedName(const FixedString<64>& name) const;

    AffectorType m_Type;
    const ParticleSimulationDefinition& m_Owner;
    FixedArray<bool, kEmitterSlots> m_AttachedEmitters; // not archived

    FixedString<64> m_Name;
    bool m_Enabled = true;
    float m_StartTime = 0.0f;
    bool m_HasInfiniteLifeTime = true;
    float m_TotalLifeTime = 0.0f;
    bool m_UseYoungParticleAffectThreshold = false;
    float m_YoungParticleAffectThreshold = 0.0f;
    bool m_UseOldParticleAffectThreshold = false;
    float m_OldParticleAffectThreshold = 0.0f;
    bool m_AffectAttachedParticles = true;
    FixedVector<AttachedEmitterName, 32> m_AttachedEmitterNames;
};

} // namespace Corvid
