#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>

#include "Engine/Render/Mesh/MeshData.h"
#include "Engine/Render/Particle/ParticleSimulationDefinition.h"
#include "Engine/Window/BrushSystem.h"
#include "GS/Entity/EntitySystem.h"
#include "Tests/Recast/ProgramFixture.h"
#include "Tests/Support/ArchiveFixture.h"

namespace Corvid {
namespace {

using Entity = std::unique_ptr<EntityDef>; // null without a definition

// What the conversions do between their two archives.
template <class Object> void LoadObject(FileArchive& archive, Object& object) {
    if constexpr (std::is_same_v<Object, MeshData>)
        archive.ReadLabeledObject(u"MeshData", object);
    else if constexpr (std::is_same_v<Object, ParticleSimulationDefinition>)
        archive.ReadLabeledObject(u"ParticleSimulation", object);
    else if constexpr (std::is_same_v<Object, BrushSystem::BrushSet>)
        object.Load(archive);
    else
        object = EntitySystem().ReadDefinition(archive, u"memory");
}

template <class Object> void SaveObject(FileArchive& archive, const Object& object) {
    if constexpr (std::is_same_v<Object, MeshData>)
        archive.WriteLabeledObject(u"MeshData", object);
    else if constexpr (std::is_same_v<Object, ParticleSimulationDefinition>)
        archive.WriteLabeledObject(u"ParticleSimulation", object);
    else if constexpr (std::is_same_v<Object, BrushSystem::BrushSet>)
        object.Save(archive);
    else if (object != nullptr)
        EntitySystem::WriteDefinition(archive, *object);
}

class TruncationTest : public ArchiveFixture {
protected:
    template <class Object> std::string Convert(const std::string& bytes, ArchiveFormat format) {
        Object object;
        LoadWith(bytes, [&](FileArchive& archive) { LoadObject(archive, object); });
        return SaveWith(format, [&](FileArchive& archive) { SaveObject(archive, object); });
    }

    // Whatever is left of a file is loaded with reports in proportion to it, and what is saved then is a sound file.
    template <class Object> void CutAtEveryLength(const char* example) {
        const std::string text = ReadExample(example);
        ASSERT_FALSE(text.empty()) << example;
        const std::string binary = Convert<Object>(text, ArchiveFormat::Binary);
        EXPECT_EQ(m_Reports.Take(), "") << example;
        EXPECT_TRUE(Convert<Object>(binary, ArchiveFormat::Text) == text);
        const std::size_t lastLine = text.rfind('\n', text.size() - 2) + 1;
        for (const std::string& whole : {text, binary}) {
            for (std::size_t length = 0; length < whole.size(); ++length) {
                SCOPED_TRACE(std::string(example) + " cut at " + std::to_string(length));
                const std::string saved = Convert<Object>(whole.substr(0, length), ArchiveFormat::Binary);
                const std::string reports = m_Reports.Take();
                const bool isInLastValue = whole == text && length > lastLine; // a digit less makes a number, too
                ASSERT_TRUE(isInLastValue || !reports.empty());
                ASSERT_LE(reports.size(), (std::size_t(1) << 20) + 512 * length);
                ASSERT_LE(saved.size(), (std::size_t(4) << 20) + 256 * length);
                if (std::is_same_v<Object, Entity> && saved == kBinaryHeader)
                    continue;
                ASSERT_TRUE(Convert<Object>(saved, ArchiveFormat::Binary) == saved);
                ASSERT_EQ(m_Reports.Take(), "");
                ASSERT_TRUE(KeepsWhatIsThere<Object>(whole, length, saved));
            }
        }
    }

    // The values in front of a cut are those of the whole file. Particle effects and brush sets write their counts and
    // words by what they hold, which differs.
    template <class Object>
    static bool KeepsWhatIsThere(const std::string& whole, std::size_t length, const std::string& saved) {
        constexpr std::size_t kLargestValue = 4 + 2 * 256;
        if (!whole.starts_with(kBinaryHeader) || length < kLargestValue || !std::is_same_v<Object, MeshData>)
            return true;
        return whole.compare(0, length - kLargestValue, saved, 0, length - kLargestValue) == 0;
    }
};

TEST_F(TruncationTest, MeshCutAtEveryLength) {
    CutAtEveryLength<MeshData>("Mesh/cube.mesh");
}

TEST_F(TruncationTest, ParticleEffectCutAtEveryLength) {
    CutAtEveryLength<ParticleSimulationDefinition>("Particle/ReactorBlast.particle");
}

TEST_F(TruncationTest, BrushSetCutAtEveryLength) {
    CutAtEveryLength<BrushSystem::BrushSet>("Brushes/ConsolePanels.brushes");
}

TEST_F(TruncationTest, EntityCutAtEveryLength) {
    CutAtEveryLength<Entity>("Entity/HullFragments.entity");
    CutAtEveryLength<Entity>("Entity/OutpostRaid.entity");
}

} // namespace
} // namespace Corvid
