#include "Engine/Render/Particle/ParticleAffectorFactory.h"

#include "Engine/Render/Particle/ColorAffectors.h"
#include "Engine/Render/Particle/MotionAffectors.h"
#include "Engine/Render/Particle/ParticleAffector_KillParticlesNearPoint.h"
#include "Engine/Render/Particle/SizeAffectors.h"

namespace Corvid {

std::unique_ptr<ParticleAffector> CreateAffector(AffectorType type, const ParticleSimulationDefinition& owner) {
    switch (type) {
    case AffectorType::ColorOscillator:
        return std::make_unique<ParticleAffector_ColorOscillator>(owner);
    case AffectorType::Drag:
        return std::make_unique<ParticleAffector_Drag>(owner);
    case AffectorType::Fade:
        return std::make_unique<ParticleAffector_Fade>(owner);
    case AffectorType::Jitter:
        return std::make_unique<ParticleAffector_Jitter>(owner);
    case AffectorType::KillParticlesNearPoint:
        return std::make_unique<ParticleAffector_KillParticlesNearPoint>(owner);
    case AffectorType::LinearBoundedInflate:
        return std::make_unique<ParticleAffector_LinearBoundedInflate>(owner);
    case AffectorType::LinearForceInDirection:
        return std::make_unique<ParticleAffector_LinearForceInDirection>(owner);
    case AffectorType::LinearForceToPoint:
        return std::make_unique<ParticleAffector_LinearForceToPoint>(owner);
    case AffectorType::LinearInflate:
        return std::make_unique<ParticleAffector_LinearInflate>(owner);
    case AffectorType::RotateAboutAxis:
        return std::make_unique<ParticleAffector_RotateAboutAxis>(owner);
    case AffectorType::SizeOscillator:
        return std::make_unique<ParticleAffector_SizeOscillator>(owner);
    case AffectorType::ExposedByController: // made by the effect simulations, inside themselves
    case AffectorType::Invalid:
        break;
    }
    return nullptr;
}

} // namespace Corvid
