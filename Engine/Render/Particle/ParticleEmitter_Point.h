#pragma once

#include "Engine/Render/Particle/ParticleEmitter.h"

namespace Corvid {

class ParticleEmitter_Point final : public Record<ParticleEmitter_Point, ParticleEmitter> {
public:
    ParticleEmitter_Point() : Record(EmitterType::Point) {}

    static void Fields(auto& self, auto& fields) { fields.Value(u"AngleVariance", self.m_AngleVariance); }

private:
    float m_AngleVariance = 3.1415927f; // radians
};

} // namespace Corvid
