#include <climits>

#include "Engine/Render/Billboard.h"
#include "Engine/Render/Particle/ParticleEmitter_Point.h"
#include "Tests/Engine/Render/Particle/ParticleFixture.h"
#include "Tests/Engine/Render/Particle/ParticleSamples.h"

namespace Corvid {
namespace {

constexpr char kSampleTextures[] = "numTextures 2\ntextureName \"one.dds\"\ntextureName \"two.dds\"\n";

std::string LinesOf(const SampleEntry& emitter) {
    return EffectLines({emitter}, {});
}

SampleEntry EmitterWith(std::string_view from, std::string_view to) {
    SampleEntry emitter = SampleEmitter();
    emitter.m_Lines = With(emitter.m_Lines, from, to);
    return emitter;
}

class ParticleEmitterTest : public ParticleFixture {};

TEST_F(ParticleEmitterTest, TextureCountOtherThanTwoIsReportedAndKeepsStep) {
    struct Case {
        const char* m_Name;
        const char* m_Lines;
        const char* m_First;
        const char* m_Second;
        int m_FailedChecks;
        int m_Reports;
    };
    const Case kCases[] = {
        {"Three", "numTextures 3\ntextureName \"a\"\ntextureName \"b\"\ntextureName \"c\"\n", "a", "b", 1, 1},
        {"One", "numTextures 1\ntextureName \"a\"\n", "a", "", 1, 1},
        {"None", "numTextures 0\n", "", "", 1, 1},
        {"Negative", "numTextures -2147483648\n", "", "", 1, 1},
        {"MissingCountIsTwo", "textureName \"a\"\ntextureName \"b\"\n", "a", "b", 0, 1},
        {"MissingName", "numTextures 2\ntextureName \"a\"\n", "a", "", 0, 1},
    };
    for (const Case& row : kCases) {
        SCOPED_TRACE(row.m_Name);
        const std::string saved =
            std::string("numTextures 2\ntextureName \"") + row.m_First + "\"\ntextureName \"" + row.m_Second + "\"\n";
        EXPECT_EQ(TextToText(LinesOf(EmitterWith(kSampleTextures, row.m_Lines))),
                  LinesOf(EmitterWith(kSampleTextures, saved)));
        EXPECT_EQ(m_Reports.Count("elementCount == data->Size() (Engine/Archive/Archive, "), row.m_FailedChecks);
        EXPECT_EQ(m_Reports.Count(""), row.m_Reports);
        m_Reports.Take();
    }
}

TEST_F(ParticleEmitterTest, HugeTextureCountIsCut) {
    const std::string lines = LinesOf(EmitterWith("numTextures 2", "numTextures 2147483647"));
    EXPECT_EQ(TextToText(lines), LinesOf(SampleEmitter()));
    EXPECT_EQ(m_Reports.Count("The count 'numTextures' claims 2147483647 elements"), 1);
    EXPECT_LT(m_Reports.Count(""), 2 * 4096);
}

TEST_F(ParticleEmitterTest, BillboardRectangleFollowsTheAnchor) {
    const BillboardRectangle kNone{0.0f, 0.0f, 0.0f, 0.0f};
    struct Case {
        std::int32_t m_Anchor;
        BillboardRectangle m_Rectangle;
    };
    const Case kCases[] = {
        {0, {-0.5f, 0.5f, 0.5f, -0.5f}},
        {1, {0.0f, 0.5f, 1.0f, -0.5f}},
        {2, {-1.0f, 0.5f, 0.0f, -0.5f}},
        {3, {0.0f, 0.0f, 1.0f, -1.0f}},
        {4, {-0.5f, 0.0f, 0.5f, -1.0f}},
        {5, {-1.0f, 0.0f, 0.0f, -1.0f}},
        {6, {-1.0f, 1.0f, 0.0f, 0.0f}},
        {7, {-0.5f, 1.0f, 0.5f, 0.0f}},
        {8, {0.0f, 1.0f, 1.0f, 0.0f}},
        {9, kNone},
        {-1, kNone},
        {INT_MAX, kNone},
        {INT_MIN, kNone},
    };
    EXPECT_EQ(ParticleEmitter_Point().GetBillboardRectangle(), kCases[0].m_Rectangle) << "of the default";
    for (const Case& row : kCases) {
        SCOPED_TRACE(row.m_Anchor);
        const SampleEntry emitter = EmitterWith("BillboardAnchor 8", "BillboardAnchor " + std::to_string(row.m_Anchor));
        ParticleSimulationDefinition definition;
        LoadText(LinesOf(emitter), definition);
        EXPECT_EQ(definition.GetEmitters()[0]->GetBillboardRectangle(), row.m_Rectangle);
        EXPECT_EQ(SaveLines(definition), LinesOf(emitter));
        EXPECT_EQ(m_Reports.Count("false (Engine/Render/Billboard, "), row.m_Rectangle == kNone);
        EXPECT_EQ(m_Reports.Count(""), row.m_Rectangle == kNone);
        m_Reports.Take();
    }
}

TEST_F(ParticleEmitterTest, FileNamesLoseDriveAndFolders) {
    struct Case {
        const char* m_Name;
        const char* m_Normalised;
    };
    const Case kCases[] = {
        {"C:\\art\\glow.dds", "glow.dds"},
        {"art/fx/glow.dds", "glow.dds"},
        {"art\\fx/glow.dds", "glow.dds"},
        {"C:glow.dds", "glow.dds"},
        {"glow.dds", "glow.dds"},
        {"v1.2/glow", "glow"},
        {"art/glow.v2.dds", "glow.v2.dds"},
        {"art/.hidden", ".hidden"},
        {"art/", ""},
        {"", ""},
    };
    const auto emitterWithNames = [](const std::string& name) {
        SampleEntry emitter = EmitterWith("ring.mesh", name);
        for (const char* const other : {"one.dds", "two.dds", "fire.texanim"})
            emitter.m_Lines = With(emitter.m_Lines, other, name);
        return LinesOf(emitter);
    };
    for (const Case& row : kCases) {
        SCOPED_TRACE(row.m_Name);
        ParticleSimulationDefinition definition;
        LoadText(emitterWithNames(row.m_Name), definition);
        definition.NormaliseEmitterFileNames();
        EXPECT_EQ(SaveLines(definition), emitterWithNames(row.m_Normalised));
    }
    EXPECT_EQ(m_Reports.Take(), "");
}

} // namespace
} // namespace Corvid
