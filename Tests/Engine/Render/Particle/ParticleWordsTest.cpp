#include "Engine/Render/Particle/AffectorType.h"
#include "Engine/Render/Particle/EmitterType.h"
#include "Engine/Render/Particle/PipelineEffect.h"
#include "Engine/Render/Particle/TextureAnimationSpawnType.h"
#include "Tests/Support/ExpectWords.h"

namespace Corvid {
namespace {

TEST(ParticleWordsTest, Words) {
    ExpectWords<EmitterType>(u"Point Sphere Ring MeshSurface");
    ExpectWords<AffectorType>(u"ColorOscillator Drag Fade Jitter KillParticlesNearPoint LinearBoundedInflate "
                              u"LinearForceInDirection LinearForceToPoint LinearInflate RotateAboutAxis SizeOscillator "
                              u"Exposed_By_Controller");
    ExpectWords<TextureAnimationSpawnType>(u"FirstFrame SequentialFrames RandomFrames");
    ExpectWords<PipelineEffect>(
        u"SetupDefaultStates.fx Prim2D.fx Prim2DShowChannel.fx Prim2DAdditive.fx Prim3D_Mesh.fx "
        u"Prim3D_Primative.fx Particle_Additive.fx Particle_Mesh.fx Particle_MeshOld.fx "
        u"Particle_AlphaMesh.fx Particle_NotAdditive.fx Particle_MeshShadowed.fx Beam_Additive.fx "
        u"Beam_NotAdditive.fx TransformedNoLight.fx GS_Asteroid.fx GS_ShadowedAsteroid.fx "
        u"GS_Exhaust.fx GS_Ship.fx GS_ShadowedShip.fx GS_ShipDebugMip.fx GS_ShipBuilding.fx "
        u"GS_ShipPhasedOut.fx GS_Planet.fx GS_Star.fx GS_Skybox.fx GS_Shield.fx GS_ShieldImpact.fx "
        u"GS_StarCorona.fx GS_PlanetCorona.fx GS_BandBox.fx GS_AsteroidBloom.fx GS_ShipBloom.fx "
        u"GS_PlanetBloom.fx GS_StarBloom.fx GS_SkyboxBloom.fx PostProcessBloom.fx "
        u"PostProcessFinal.fx ShadowOccluder.fx ShadowBlur.fx");
}

} // namespace
} // namespace Corvid
