#pragma once

#include <memory>

#include "Engine/Render/Particle/ParticleAffector.h"

namespace Corvid {

class ParticleSimulationDefinition;

// A new affector of the class that belongs to the type; null where the type has no class.
std::unique_ptr<ParticleAffector> CreateAffector(AffectorType type, const ParticleSimulationDefinition& owner);

} // namespace Corvid
