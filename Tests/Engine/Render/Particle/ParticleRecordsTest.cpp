#include <algorithm>

#include <gmock/gmock.h>

#include "Tests/Engine/Render/Particle/ParticleFixture.h"
#include "Tests/Engine/Render/Particle/ParticleSamples.h"

namespace Corvid {
namespace {

// The lines behind the base record: with values of their own, and as a new object has them.
struct Kind {
    const char* m_Word;
    bool m_IsEmitter;
    const char* m_Lines;
    const char* m_Defaults;
};

const Kind kKinds[] = {
    {"Point", true, "AngleVariance 0.500000\n", "AngleVariance 3.141593\n"},
    {"Sphere", true,
     "SphereRadiusXMax 1.500000\nSphereRadiusXMin 2.500000\nSphereRadiusYMax 3.500000\nSphereRadiusYMin 4.500000\n"
     "SphereRadiusZMax 5.500000\nSphereRadiusZMin 6.500000\nParticleMaxStartSpeedAzimuthalTangential 7.500000\n"
     "ParticleMaxStartSpeedPolarTangential 8.500000\nScaleStartSpeedsByRadius TRUE\n"
     "SpawnAngleLatitudinalStart 0.500000\nSpawnAngleLatitudinalStop 0.750000\n"
     "SpawnAngleLongitudinalStart 0.250000\nSpawnAngleLongitudinalStop 0.125000\n",
     "SphereRadiusXMax 10.000000\nSphereRadiusXMin 10.000000\nSphereRadiusYMax 10.000000\nSphereRadiusYMin 10.000000\n"
     "SphereRadiusZMax 10.000000\nSphereRadiusZMin 10.000000\nParticleMaxStartSpeedAzimuthalTangential 0.000000\n"
     "ParticleMaxStartSpeedPolarTangential 0.000000\nScaleStartSpeedsByRadius FALSE\n"
     "SpawnAngleLatitudinalStart 0.000000\nSpawnAngleLatitudinalStop 3.141593\n"
     "SpawnAngleLongitudinalStart 0.000000\nSpawnAngleLongitudinalStop 6.283185\n"},
    {"Ring", true,
     "RingRadiusXMin 1.500000\nRingRadiusXMax 2.500000\nRingRadiusYMin 3.500000\nRingRadiusYMax 4.500000\n"
     "ParticleMaxStartSpeedTangential 5.500000\nParticleMaxStartSpeedRingNormal 6.500000\n"
     "ScaleStartSpeedsByRadius TRUE\nSpawnAngleStart 0.250000\nSpawnAngleStop 0.500000\nminSpawnHeight -1.500000\n"
     "maxSpawnHeight 7.500000\nspawnDirectionIsParallelToPlane FALSE\nisSpawnAngleRandom FALSE\n"
     "nonRandomSpawnLoopEmittedParticleCount -5\n",
     "RingRadiusXMin 10.000000\nRingRadiusXMax 10.000000\nRingRadiusYMin 10.000000\nRingRadiusYMax 10.000000\n"
     "ParticleMaxStartSpeedTangential 0.000000\nParticleMaxStartSpeedRingNormal 0.000000\n"
     "ScaleStartSpeedsByRadius FALSE\nSpawnAngleStart 0.000000\nSpawnAngleStop 6.283185\nminSpawnHeight 0.000000\n"
     "maxSpawnHeight 0.000000\nspawnDirectionIsParallelToPlane TRUE\nisSpawnAngleRandom TRUE\n"
     "nonRandomSpawnLoopEmittedParticleCount 0\n"},
    {"ColorOscillator", false,
     "TransitionPeriod 2.500000\nStartColor 80ff0033\nStartAlpha 0.500000\nEndColor 330080ff\nEndAlpha 0.250000\n",
     "TransitionPeriod 1.000000\nStartColor ffffffff\nStartAlpha 1.000000\nEndColor ffffffff\nEndAlpha 1.000000\n"},
    {"Drag", false, "DragCoefficient 2.500000\n", "DragCoefficient 1.000000\n"},
    {"Fade", false, "DoFadeOut FALSE\nFadeOutTime 2.500000\nDoFadeIn TRUE\nFadeInTime 3.500000\n",
     "DoFadeOut TRUE\nFadeOutTime 1.000000\nDoFadeIn FALSE\nFadeInTime 1.000000\n"},
    {"Jitter", false, "JitterForce 2.500000\nUseCommonForce TRUE\n", "JitterForce 0.000000\nUseCommonForce FALSE\n"},
    {"KillParticlesNearPoint", false, "Point [ 1.000000 2.000000 3.000000 ]\nDistance 2.500000\n",
     "Point [ 0.000000 0.000000 0.000000 ]\nDistance 1.000000\n"},
    {"LinearBoundedInflate", false,
     "MinWidth 1.500000\nMaxWidth 2.500000\nMinHeight 3.500000\nMaxHeight 4.500000\n",
     "MinWidth 0.000000\nMaxWidth 0.000000\nMinHeight 0.000000\nMaxHeight 0.000000\n"},
    {"LinearForceInDirection", false,
     "MinForce 1.500000\nMaxForce 2.500000\nDirection [ 0.000000 2.000000 3.000000 ]\n",
     "MinForce 1.000000\nMaxForce 1.000000\nDirection [ 1.000000 0.000000 0.000000 ]\n"},
    {"LinearForceToPoint", false, "MinForce 1.500000\nMaxForce 2.500000\nPoint [ 1.000000 2.000000 3.000000 ]\n",
     "MinForce 1.000000\nMaxForce 1.000000\nPoint [ 0.000000 0.000000 0.000000 ]\n"},
    {"LinearInflate", false, "WidthInflateRate 1.500000\nHeightInflateRate 2.500000\n",
     "WidthInflateRate 1.000000\nHeightInflateRate 1.000000\n"},
    {"RotateAboutAxis", false,
     "AngularVelocity 1.500000\nRadius 2.500000\nAxisOfRotation [ 0.000000 2.000000 3.000000 ]\n"
     "AxisOrigin [ 4.000000 5.000000 6.000000 ]\n",
     "AngularVelocity 1.000000\nRadius 1.000000\nAxisOfRotation [ 1.000000 0.000000 0.000000 ]\n"
     "AxisOrigin [ 0.000000 0.000000 0.000000 ]\n"},
    {"SizeOscillator", false,
     "TransitionPeriod 2.500000\nBeginSizeX 3.500000\nBeginSizeY 4.500000\nEndSizeX 5.500000\nEndSizeY 6.500000\n",
     "TransitionPeriod 1.000000\nBeginSizeX 1.000000\nBeginSizeY 1.000000\nEndSizeX 3.000000\nEndSizeY 3.000000\n"},
};

std::string EffectOf(const Kind& kind, const std::string& lines) {
    const SampleEntry entry{kind.m_Word, lines};
    return kind.m_IsEmitter ? EffectLines({entry}, {}) : EffectLines({}, {entry});
}

class ParticleRecordsTest : public ParticleFixture {};

TEST_F(ParticleRecordsTest, EveryKindKeepsItsLabelsOrderAndValues) {
    for (const Kind& kind : kKinds) {
        SCOPED_TRACE(kind.m_Word);
        const std::string lines =
            EffectOf(kind, std::string(kind.m_IsEmitter ? kEmitterLines : kAffectorLines) + kind.m_Lines);
        const std::string bytes = TextToBinary(lines);
        EXPECT_EQ(TextToText(lines), lines);
        EXPECT_EQ(BinaryToText(bytes), lines);
        EXPECT_EQ(TextToBinary(BinaryToText(bytes)), bytes);
        EXPECT_THAT(Reports(), testing::IsEmpty());
    }
}

TEST_F(ParticleRecordsTest, MissingFieldsKeepTheirDefaults) {
    for (const Kind& kind : kKinds) {
        SCOPED_TRACE(kind.m_Word);
        const std::string defaults =
            std::string(kind.m_IsEmitter ? kEmitterDefaults : kAffectorDefaults) + kind.m_Defaults;
        const bool isFlat = !kind.m_IsEmitter; // the rows of a matrix and the second texture name are not missed
        const auto fields = std::count(defaults.begin(), defaults.end(), '\n') - (isFlat ? 0 : 3);
        ForgetReports();
        EXPECT_EQ(TextToText(EffectOf(kind, "")), EffectOf(kind, defaults));
        EXPECT_EQ(CountReports("Text FileArchive missing Label."), fields);
        EXPECT_EQ(CountReports(), fields);
    }
}

TEST_F(ParticleRecordsTest, EmptyEffectIsTwentyOneBytes) {
    ParticleSimulationDefinition definition;
    EXPECT_EQ(SaveBinary(definition), std::string("BIN\n\0\0\0\x20\x41\0\0\0\0\0\0\0\0\0\0\0\0", 21));
}

} // namespace
} // namespace Corvid
