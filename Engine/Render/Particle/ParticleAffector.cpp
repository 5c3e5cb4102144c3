#include "Engine/Render/Particle/ParticleAffector.h"

#include <algorithm>

#include "Engine/Render/Particle/ParticleSimulationDefinition.h"

namespace Corvid {

void ParticleAffector::ResolveAttachments() {
    const auto& emitters = m_Owner.GetEmitters();
    for (int i = 0; i < kEmitterSlots; ++i) {
        const bool isThere = i < emitters.GetSize() && emitters[i] != nullptr;
        m_AttachedEmitters[i] = isThere && HasAttachedName(emitters[i]->GetName());
    }
}

bool ParticleAffector::HasAttachedName(const FixedString<64>& name) const {
    return std::any_of(m_AttachedEmitterNames.begin(), m_AttachedEmitterNames.end(),
                       [&](const AttachedEmitterName& attached) { return attached.m_Text == name; });
}

} // namespace Corvid
