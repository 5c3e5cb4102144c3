#include "Tests/Engine/Render/Particle/ParticleFixture.h"
#include "Tests/Engine/Render/Particle/ParticleSamples.h"

namespace Corvid {
namespace {

using Entries = std::vector<SampleEntry>;

// What both lists of a definition are to keep to.
struct ListKind {
    std::string m_Name;
    std::size_t m_Capacity;

    SampleEntry Sample() const { return m_Name == "Emitter" ? SampleEmitter() : SampleAffector(); }

    // A definition with these entries in the list, and one in the other.
    std::string Lines(const Entries& entries) const {
        return m_Name == "Emitter" ? EffectLines(entries, {SampleAffector()}) : EffectLines({SampleEmitter()}, entries);
    }

    std::string ReportWithoutClass(const std::string& word, std::size_t index) const {
        return "The type '" + word + "' of 'Num" + m_Name + "s' number " + std::to_string(index) + " has no class";
    }
};

const ListKind kEmitters{"Emitter", 32};
const ListKind kAffectors{"Affector", 30};

class ParticleListsTest : public ParticleFixture {};

TEST_F(ParticleListsTest, EntriesWithoutClassAreSkippedInText) {
    struct Case {
        const ListKind& m_Kind;
        const char* m_Word;
        int m_Conversions; // that fail
    };
    const Case kCases[] = {{kEmitters, "MeshSurface", 0}, {kAffectors, "Exposed_By_Controller", 0},
                           {kEmitters, "Invalid", 0},     {kAffectors, "Invalid", 0},
                           {kEmitters, "point", 1},       {kAffectors, "drag", 1},
                           {kEmitters, "Drag", 1},        {kAffectors, "", 1}};
    for (const Case& row : kCases) {
        const ListKind& kind = row.m_Kind;
        for (std::size_t position = 0; position < 3; ++position) {
            SCOPED_TRACE(kind.m_Name + " '" + row.m_Word + "' at " + std::to_string(position));
            Entries entries(3, kind.Sample());
            entries[position].m_Word = row.m_Word;
            EXPECT_EQ(TextToText(kind.Lines(entries)), kind.Lines(Entries(2, kind.Sample())));
            EXPECT_EQ(m_Reports.Count("Failed to convert"), row.m_Conversions);
            EXPECT_EQ(m_Reports.Count(kind.ReportWithoutClass(row.m_Word, position)), 1);
            EXPECT_EQ(m_Reports.Count(""), row.m_Conversions + 1);
            m_Reports.Take();
        }
    }
}

TEST_F(ParticleListsTest, MissingTypeLineIsAnEntryWithoutClass) {
    for (const ListKind& kind : {kEmitters, kAffectors}) {
        Entries entries(3, kind.Sample());
        entries[1].m_Word = "Bad";
        const std::string lines = With(kind.Lines(entries), kind.m_Name + "Type \"Bad\"\n", "");
        EXPECT_EQ(TextToText(lines), kind.Lines(Entries(2, kind.Sample())));
        EXPECT_EQ(m_Reports.Count("Text FileArchive missing Label."), 1);
        EXPECT_EQ(m_Reports.Count(kind.ReportWithoutClass("Invalid", 1)), 1);
        EXPECT_EQ(m_Reports.Count(""), 2);
        m_Reports.Take();
    }
}

TEST_F(ParticleListsTest, EntryWithoutClassEndsABinaryArchive) {
    for (const ListKind& kind : {kEmitters, kAffectors}) {
        for (std::size_t position = 0; position < 3; ++position) {
            SCOPED_TRACE(kind.m_Name + " at " + std::to_string(position));
            std::string bytes = TextToBinary(kind.Lines(Entries(3, kind.Sample())));
            const std::string word =
                kind.m_Name == "Emitter" ? std::string("P\0o\0i\0n\0t", 9) : std::string("D\0r\0a\0g", 7);
            std::size_t at = bytes.find(word);
            for (std::size_t i = 0; i < position; ++i)
                at = bytes.find(word, at + 1);
            bytes[at] = '?';

            const Entries kept(position, kind.Sample());
            const std::string lines = kind.m_Name == "Emitter" ? EffectLines(kept, {}) : kind.Lines(kept);
            EXPECT_EQ(BinaryToText(bytes), With(lines, "length 7", "length 0"));
            EXPECT_EQ(m_Reports.Count("Failed to convert '?"), 1);
            EXPECT_EQ(m_Reports.Count(kind.ReportWithoutClass(kind.m_Name == "Emitter" ? "?oint" : "?rag", position)),
                      1);
            EXPECT_EQ(m_Reports.Count("Unread input"), 1);
            EXPECT_EQ(m_Reports.Count(""), 3);
            m_Reports.Take();
        }
    }
}

TEST_F(ParticleListsTest, EntriesBeyondTheCapacityAreReadAndDropped) {
    for (const ListKind& kind : {kEmitters, kAffectors}) {
        SCOPED_TRACE(kind.m_Name);
        const std::string full = kind.Lines(Entries(kind.m_Capacity, kind.Sample()));
        EXPECT_EQ(TextToText(full), full);
        EXPECT_EQ(m_Reports.Take(), "");

        Entries entries(kind.m_Capacity + 2, kind.Sample());
        EXPECT_EQ(TextToText(kind.Lines(entries)), full);
        EXPECT_EQ(m_Reports.Count("m_CurrentSize < MAX_SIZE"), 2);
        EXPECT_EQ(m_Reports.Count(""), 2);
        m_Reports.Take();

        // An entry without class takes its place.
        for (std::size_t i = 1; i < entries.size(); ++i)
            entries[i].m_Word = "Invalid";
        entries.back() = kind.Sample();
        EXPECT_EQ(TextToText(kind.Lines(entries)), kind.Lines(Entries(1, kind.Sample())));
        EXPECT_EQ(m_Reports.Count("m_CurrentSize < MAX_SIZE"), 2);
        m_Reports.Take();
    }
}

// The affectors that are there resolve when an emitter is appended, which is before its name is read.
TEST_F(ParticleListsTest, LoadingAgainAppends) {
    ParticleSimulationDefinition definition;
    LoadText(EffectLines({SampleEmitter()}, {SampleAffector()}), definition);
    for (int slot = 1; slot <= 2; ++slot) {
        LoadText(EffectLines({SampleEmitter()}, {}), definition);
        EXPECT_TRUE(definition.GetAffectors()[0]->IsAttachedTo(slot - 1));
        EXPECT_FALSE(definition.GetAffectors()[0]->IsAttachedTo(slot));
    }
    EXPECT_EQ(SaveLines(definition), EffectLines(Entries(3, SampleEmitter()), {SampleAffector()}));
}

} // namespace
} // namespace Corvid
