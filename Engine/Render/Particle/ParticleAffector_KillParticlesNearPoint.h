#pragma once

#include "Engine/Render/Particle/ParticleAffector.h"

namespace Corvid {

class ParticleAffector_KillParticlesNearPoint final
    : public Record<ParticleAffector_KillParticlesNearPoint, ParticleAffector> {
public:
    explicit ParticleAffector_KillParticlesNearPoint(const ParticleSimulationDefinition& owner)
        : Record(AffectorType::KillParticlesNearPoint, owner) {}

    static void Fields(auto& self, auto& fields) {
        fields.Value(u"Point", self.m_Point);
        fields.Value(u"Distance", self.m_Distance);
    }

private:
    Vector3 m_Point{0.0f, 0.0f, 0.0f};
    float m_Distance = 1.0f;
};

} // namespace Corvid
