#include "Engine/Render/Particle/AffectorType.h"
#include "Engine/Render/Particle/EmitterType.h"
#include "Engine/Render/Particle/PipelineEffect.h"
#include "Engine/Render/Particle/TextureAnimationSpawnType.h"
#include "Tests/Support/ReportLog.h"

#include <gtest/gtest.h>

namespace Corvid {
namespace {

// Walks the words from -1 to `last`, which has the word `lastWord`; then tries a wrong one.
template <class Enum> void CheckWords(int last, std::u16string_view lastWord, const char16_t* wrongWord) {
    ReportLog reports;
    EXPECT_EQ(EnumWordCount<Enum>(), last + 1);
    for (int i = -1; i <= last; ++i)
        EXPECT_EQ(EnumFromWord<Enum>(WordOf(static_cast<Enum>(i))), static_cast<Enum>(i)) << i;
    EXPECT_EQ(WordOf(static_cast<Enum>(-1)), std::u16string_view(u"Invalid"));
    EXPECT_EQ(WordOf(static_cast<Enum>(last)), lastWord);
    EXPECT_EQ(reports.Take(), "");
    EXPECT_EQ(EnumFromWord<Enum>(wrongWord), Enum::Invalid);
    EXPECT_EQ(reports.Count("Failed to convert '"), 1);
}

TEST(ParticleWordsTest, WordsLeadToTheirValuesAndBack) {
    CheckWords<EmitterType>(3, u"MeshSurface", u"point");
    CheckWords<AffectorType>(11, u"Exposed_By_Controller", u"ExposedByController");
    CheckWords<TextureAnimationSpawnType>(2, u"RandomFrames", u"randomFrames");
    CheckWords<PipelineEffect>(39, u"ShadowBlur.fx", u"Prim3D_Primitive.fx");
    EXPECT_EQ(WordOf(AffectorType::KillParticlesNearPoint), std::u16string_view(u"KillParticlesNearPoint"));
    EXPECT_EQ(static_cast<int>(AffectorType::KillParticlesNearPoint), 4);
    EXPECT_EQ(WordOf(PipelineEffect::GS_Asteroid), std::u16string_view(u"GS_Asteroid.fx"));
    EXPECT_EQ(static_cast<int>(PipelineEffect::GS_Asteroid), 15);
}

} // namespace
} // namespace Corvid
