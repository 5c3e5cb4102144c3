#pragma once

#include <memory>

#include "Engine/Render/Particle/ParticleEmitter.h"

namespace Corvid {

// A new emitter of the class that belongs to the type; null where the type has no class.
std::unique_ptr<ParticleEmitter> CreateEmitter(EmitterType type);

} // namespace Corvid
