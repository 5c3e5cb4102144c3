#include <algorithm>

#include "Tests/Engine/Render/Particle/ParticleFixture.h"
#include "Tests/Engine/Render/Particle/ParticleSamples.h"

namespace Corvid {
namespace {

// The fields behind those of the base record, as in ParticleSamples.h.
struct Kind {
    const char* m_Word;
    bool m_IsEmitter;
    const char* m_Fields;
};

const Kind kKinds[] = {
    {"Point", true, "AngleVariance 0.500000 | 3.141593\n"},
    {"Sphere", true,
     "SphereRadiusXMax 1.500000 | 10.000000\nSphereRadiusXMin 2.500000 | 10.000000\n"
     "SphereRadiusYMax 3.500000 | 10.000000\nSphereRadiusYMin 4.500000 | 10.000000\n"
     "SphereRadiusZMax 5.500000 | 10.000000\nSphereRadiusZMin 6.500000 | 10.000000\n"
     "ParticleMaxStartSpeedAzimuthalTangential 7.500000 | 0.000000\n"
     "ParticleMaxStartSpeedPolarTangential 8.500000 | 0.000000\nScaleStartSpeedsByRadius TRUE | FALSE\n"
     "SpawnAngleLatitudinalStart 0.500000 | 0.000000\nSpawnAngleLatitudinalStop 0.750000 | 3.141593\n"
     "SpawnAngleLongitudinalStart 0.250000 | 0.000000\nSpawnAngleLongitudinalStop 0.125000 | 6.283185\n"},
    {"Ring", true,
     "RingRadiusXMin 1.500000 | 10.000000\nRingRadiusXMax 2.500000 | 10.000000\n"
     "RingRadiusYMin 3.500000 | 10.000000\nRingRadiusYMax 4.500000 | 10.000000\n"
     "ParticleMaxStartSpeedTangential 5.500000 | 0.000000\nParticleMaxStartSpeedRingNormal 6.500000 | 0.000000\n"
     "ScaleStartSpeedsByRadius TRUE | FALSE\nSpawnAngleStart 0.250000 | 0.000000\n"
     "SpawnAngleStop 0.500000 | 6.283185\nminSpawnHeight -1.500000 | 0.000000\n"
     "maxSpawnHeight 7.500000 | 0.000000\nspawnDirectionIsParallelToPlane FALSE | TRUE\n"
     "isSpawnAngleRandom FALSE | TRUE\nnonRandomSpawnLoopEmittedParticleCount -5 | 0\n"},
    {"ColorOscillator", false,
     "TransitionPeriod 2.500000 | 1.000000\nStartColor 80ff0033 | ffffffff\nStartAlpha 0.500000 | 1.000000\n"
     "EndColor 330080ff | ffffffff\nEndAlpha 0.250000 | 1.000000\n"},
    {"Drag", false, "DragCoefficient 2.500000 | 1.000000\n"},
    {"Fade", false,
     "DoFadeOut FALSE | TRUE\nFadeOutTime 2.500000 | 1.000000\nDoFadeIn TRUE | FALSE\n"
     "FadeInTime 3.500000 | 1.000000\n"},
    {"Jitter", false, "JitterForce 2.500000 | 0.000000\nUseCommonForce TRUE | FALSE\n"},
    {"KillParticlesNearPoint", false,
     "Point [ 1.000000 2.000000 3.000000 ] | [ 0.000000 0.000000 0.000000 ]\nDistance 2.500000 | 1.000000\n"},
    {"LinearBoundedInflate", false,
     "MinWidth 1.500000 | 0.000000\nMaxWidth 2.500000 | 0.000000\nMinHeight 3.500000 | 0.000000\n"
     "MaxHeight 4.500000 | 0.000000\n"},
    {"LinearForceInDirection", false,
     "MinForce 1.500000 | 1.000000\nMaxForce 2.500000 | 1.000000\n"
     "Direction [ 0.000000 2.000000 3.000000 ] | [ 1.000000 0.000000 0.000000 ]\n"},
    {"LinearForceToPoint", false,
     "MinForce 1.500000 | 1.000000\nMaxForce 2.500000 | 1.000000\n"
     "Point [ 1.000000 2.000000 3.000000 ] | [ 0.000000 0.000000 0.000000 ]\n"},
    {"LinearInflate", false, "WidthInflateRate 1.500000 | 1.000000\nHeightInflateRate 2.500000 | 1.000000\n"},
    {"RotateAboutAxis", false,
     "AngularVelocity 1.500000 | 1.000000\nRadius 2.500000 | 1.000000\n"
     "AxisOfRotation [ 0.000000 2.000000 3.000000 ] | [ 1.000000 0.000000 0.000000 ]\n"
     "AxisOrigin [ 4.000000 5.000000 6.000000 ] | [ 0.000000 0.000000 0.000000 ]\n"},
    {"SizeOscillator", false,
     "TransitionPeriod 2.500000 | 1.000000\nBeginSizeX 3.500000 | 1.000000\nBeginSizeY 4.500000 | 1.000000\n"
     "EndSizeX 5.500000 | 3.000000\nEndSizeY 6.500000 | 3.000000\n"},
};

class ParticleRecordsTest : public ParticleFixture {
protected:
    static std::string LinesOf(const Kind& kind, bool areDefault) {
        const std::string base = kind.m_IsEmitter ? FieldLines(kEmitterFields, areDefault)
                                                  : FieldLines(kAffectorFields, areDefault) +
                                                        (areDefault ? "numAttachedEmitters 0\n" : kAttachedNames);
        return base + FieldLines(kind.m_Fields, areDefault);
    }

    static std::string EffectOf(const Kind& kind, const std::string& lines) {
        const SampleEntry entry{kind.m_Word, lines};
        return kind.m_IsEmitter ? EffectLines({entry}, {}) : EffectLines({}, {entry});
    }
};

TEST_F(ParticleRecordsTest, EveryKindKeepsItsLabelsOrderAndValues) {
    for (const Kind& kind : kKinds) {
        SCOPED_TRACE(kind.m_Word);
        const std::string lines = EffectOf(kind, LinesOf(kind, false));
        const std::string bytes = TextToBinary(lines);
        EXPECT_EQ(TextToText(lines), lines);
        EXPECT_EQ(BinaryToText(bytes), lines);
        EXPECT_EQ(TextToBinary(BinaryToText(bytes)), bytes);
        EXPECT_EQ(m_Reports.Take(), "");
    }
}

TEST_F(ParticleRecordsTest, MissingFieldsKeepTheirDefaults) {
    for (const Kind& kind : kKinds) {
        SCOPED_TRACE(kind.m_Word);
        const std::string defaults = LinesOf(kind, true);
        // Each costs a message, apart from the rows of the matrix.
        const auto fields = std::count(defaults.begin(), defaults.end(), '\n') - (kind.m_IsEmitter ? 3 : 0);
        EXPECT_EQ(TextToText(EffectOf(kind, "")), EffectOf(kind, defaults));
        EXPECT_EQ(m_Reports.Count("Text FileArchive missing Label."), fields);
        EXPECT_EQ(m_Reports.Count(""), fields);
        m_Reports.Take();
    }
}

TEST_F(ParticleRecordsTest, EmptyEffectIsTwentyOneBytes) {
    EXPECT_EQ(Save(ArchiveFormat::Binary, ParticleSimulationDefinition()),
              std::string("BIN\n\0\0\0\x20\x41\0\0\0\0\0\0\0\0\0\0\0\0", 21));
}

} // namespace
} // namespace Corvid
