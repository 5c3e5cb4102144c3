#include "Engine/Render/Particle/AffectorType.h"
#include "Engine/Render/Particle/EmitterType.h"
#include "Engine/Render/Particle/PipelineEffect.h"
#include "Engine/Render/Particle/TextureAnimationSpawnType.h"
#include "Tests/Support/ExpectWords.h"

namespace Corvid {
namespace {

TEST(ParticleWordsTest, Words) {
    ExpectWords<EmitterType>({u"Point", u"Sphere", u"Ring", u"MeshSurface"});
    ExpectWords<AffectorType>({u"ColorOscillator", u"Drag", u"Fade", u"Jitter", u"KillParticlesNearPoint",
                               u"LinearBoundedInflate", u"LinearForceInDirection", u"LinearForceToPoint",
                               u"LinearInflate", u"RotateAboutAxis", u"SizeOscillator", u"Exposed_By_Controller"});
    ExpectWords<TextureAnimationSpawnType>({u"FirstFrame", u"SequentialFrames", u"RandomFrames"});
    ExpectWords<PipelineEffect>({u"SetupDefaultStates.fx",
                                 u"Prim2D.fx",
                                 u"Prim2DShowChannel.fx",
                                 u"Prim2DAdditive.fx",
                                 u"Prim3D_Mesh.fx",
                                 u"Prim3D_Primative.fx",
                                 u"Particle_Additive.fx",
                                 u"Particle_Mesh.fx",
                                 u"Particle_MeshOld.fx",
                                 u"Particle_AlphaMesh.fx",
                                 u"Particle_NotAdditive.fx",
                                 u"Particle_MeshShadowed.fx",
                                 u"Beam_Additive.fx",
                                 u"Beam_NotAdditive.fx",
                                 u"TransformedNoLight.fx",
                                 u"GS_Asteroid.fx",
                                 u"GS_ShadowedAsteroid.fx",
                                 u"GS_Exhaust.fx",
                                 u"GS_Ship.fx",
                                 u"GS_ShadowedShip.fx",
                                 u"GS_ShipDebugMip.fx",
                                 u"GS_ShipBuilding.fx",
                                 u"GS_ShipPhasedOut.fx",
                                 u"GS_Planet.fx",
                                 u"GS_Star.fx",
                                 u"GS_Skybox.fx",
                                 u"GS_Shield.fx",
                                 u"GS_ShieldImpact.fx",
                                 u"GS_StarCorona.fx",
                                 u"GS_PlanetCorona.fx",
                                 u"GS_BandBox.fx",
                                 u"GS_AsteroidBloom.fx",
                                 u"GS_ShipBloom.fx",
                                 u"GS_PlanetBloom.fx",
                                 u"GS_StarBloom.fx",
                                 u"GS_SkyboxBloom.fx",
                                 u"PostProcessBloom.fx",
                                 u"PostProcessFinal.fx",
                                 u"ShadowOccluder.fx",
                                 u"ShadowBlur.fx"});
}

} // namespace
} // namespace Corvid
