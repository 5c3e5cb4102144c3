#include "Tests/Engine/Render/Particle/ParticleFixture.h"
#include "Tests/Engine/Render/Particle/ParticleSamples.h"

namespace Corvid {
namespace {

const std::string kLong(70, 'n');
const std::string kCut(63, 'n');

SampleEntry EmitterNamed(const std::string& name) {
    SampleEntry emitter = SampleEmitter();
    emitter.m_Lines = With(emitter.m_Lines, "smoke", name);
    return emitter;
}

SampleEntry AffectorNamed(const std::string& name) {
    SampleEntry affector = SampleAffector();
    affector.m_Lines = With(affector.m_Lines, "wind", name);
    return affector;
}

// `count` as the file states it.
SampleEntry AffectorAttachedTo(const std::vector<std::string>& names, std::size_t count) {
    std::string lines = "numAttachedEmitters " + std::to_string(count) + "\n";
    for (const std::string& name : names)
        lines += "attachedEmitterName \"" + name + "\"\n";
    SampleEntry affector = SampleAffector();
    affector.m_Lines = With(affector.m_Lines, kAttachedNames, lines);
    return affector;
}

SampleEntry AffectorAttachedTo(const std::vector<std::string>& names) {
    return AffectorAttachedTo(names, names.size());
}

class ParticleAffectorTest : public ParticleFixture {};

TEST_F(ParticleAffectorTest, AttachmentsAreResolvedByName) {
    struct Case {
        std::vector<std::string> m_Names;
        std::vector<int> m_Slots;
    };
    const Case kCases[] = {
        {{}, {}},          {{"a"}, {0, 3}},        {{"b", "b"}, {1}}, {{"b", "a"}, {0, 1, 3}},
        {{"A", "aa"}, {}}, {{"nobody", "b"}, {1}}, {{kCut}, {4}},
    };
    // The third is an entry without class: it has a slot, but no name.
    std::vector<SampleEntry> emitters = {EmitterNamed("a"), EmitterNamed("b"), EmitterNamed("b"), EmitterNamed("a"),
                                         EmitterNamed(kCut)};
    emitters[2].m_Word = "MeshSurface";
    for (const Case& row : kCases) {
        SCOPED_TRACE(testing::PrintToString(row.m_Names));
        ParticleSimulationDefinition definition;
        LoadText(EffectLines(emitters, {AffectorAttachedTo(row.m_Names)}), definition);
        std::vector<int> slots;
        for (int i = 0; i < ParticleAffector::kEmitterSlots; ++i) {
            if (definition.GetAffectors()[0]->IsAttachedTo(i))
                slots.push_back(i);
        }
        EXPECT_EQ(slots, row.m_Slots);
    }
}

TEST_F(ParticleAffectorTest, AttachedNamesAreKeptWithinTheirBounds) {
    struct Case {
        const char* m_Name;
        SampleEntry m_Loaded;
        SampleEntry m_Saved;
        const char* m_Report;
        int m_Reports;
    };
    const std::vector<std::string> full(32, "x");
    std::vector<std::string> over(34, "x");
    const Case kCases[] = {
        {"LongestThatFits", AffectorAttachedTo({kCut}), AffectorAttachedTo({kCut}), "", 0},
        {"LongestOwnName", AffectorNamed(kCut), AffectorNamed(kCut), "", 0},
        {"OwnNameTooLong", AffectorNamed(kLong), AffectorNamed(kCut), "numCharsCopied < bufferSize", 1},
        {"TooLong", AffectorAttachedTo({kLong, "y"}), AffectorAttachedTo({kCut, "y"}),
         "GetLength( source ) < destination.m_BufferSize", 1},
        {"Full", AffectorAttachedTo(full), AffectorAttachedTo(full), "", 0},
        {"TooMany", AffectorAttachedTo(over), AffectorAttachedTo(full), "m_CurrentSize < MAX_SIZE", 2},
        {"MissingName", AffectorAttachedTo({"x"}, 2), AffectorAttachedTo({"x", ""}), "Label: attachedEmitterName", 1},
        {"NegativeCount", AffectorAttachedTo({}, static_cast<std::size_t>(-1)), AffectorAttachedTo({}), "", 0},
    };
    for (const Case& row : kCases) {
        SCOPED_TRACE(row.m_Name);
        EXPECT_EQ(TextToText(EffectLines({}, {row.m_Loaded})), EffectLines({}, {row.m_Saved}));
        EXPECT_EQ(m_Reports.Count(row.m_Report), row.m_Reports);
        EXPECT_EQ(m_Reports.Count(""), row.m_Reports);
        m_Reports.Take();
    }
}

} // namespace
} // namespace Corvid
