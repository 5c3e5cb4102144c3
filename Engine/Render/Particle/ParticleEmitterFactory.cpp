#include "Engine/Render/Particle/ParticleEmitterFactory.h"

#include "Engine/Render/Particle/ParticleEmitter_Point.h"
#include "Engine/Render/Particle/ParticleEmitter_Ring.h"
#include "Engine/Render/Particle/ParticleEmitter_Sphere.h"

namespace Corvid {

std::unique_ptr<ParticleEmitter> CreateEmitter(EmitterType type) {
    switch (type) {
    case EmitterType::Point:
        return std::make_unique<ParticleEmitter_Point>();
    case EmitterType::Sphere:
        return std::make_unique<ParticleEmitter_Sphere>();
    case EmitterType::Ring:
        return std::make_unique<ParticleEmitter_Ring>();
    case EmitterType::MeshSurface:
    case EmitterType::Invalid:
        break;
    }
    return nullptr;
}

} // namespace Corvid
