#include "Tests/Engine/File/TemporaryFolder.h"
#include "Tests/Engine/Render/Particle/ParticleFixture.h"
#include "Tests/Engine/Render/Particle/ParticleSamples.h"

namespace Corvid {
namespace {

class ParticleSimulationDefinitionTest : public ParticleFixture {
protected:
    static constexpr char kFile[] = "\xEF\xBB\xBFTXT\r\nParticleSimulation\r\n\tHasInfiniteLifeTime FALSE\r\n"
                                    "\tTotalLifeTime 3.500000\r\n\tNumEmitters 0\r\n\tNumAffectors 0\r\n"
                                    "\tlength 0.000000\r\n";

    TemporaryFolder m_Folder;
    ParticleSimulationDefinition m_Definition;
};

TEST_F(ParticleSimulationDefinitionTest, RecordsTheFileLoadedOrSavedLast) {
    m_Folder.Put("Smoke.Trail.particle", kFile);
    m_Definition.LoadFromFile(m_Archives, m_Folder / "Smoke.Trail.particle");
    EXPECT_EQ(m_Definition.GetFilePath(), m_Folder / "Smoke.Trail.particle");
    EXPECT_EQ(m_Definition.GetName(), u"Smoke.Trail");

    EXPECT_EQ(m_Definition.SaveToFile(m_Archives, ArchiveFormat::Text, m_Folder / "copy"), SaveResult::Saved);
    EXPECT_EQ(m_Folder.Get("copy"), kFile);
    EXPECT_EQ(m_Definition.GetFilePath(), m_Folder / "copy");
    EXPECT_EQ(m_Definition.GetName(), u"copy");

    EXPECT_EQ(m_Definition.SaveToFile(m_Archives, ArchiveFormat::Steam, u"C:\\remote\\flare.particle"),
              SaveResult::Saved);
    EXPECT_EQ(m_Definition.GetFilePath(), u"C:\\remote\\flare.particle");
    EXPECT_EQ(m_Definition.GetName(), u"flare");
    EXPECT_EQ(m_Folder.List().size(), 2u);
    EXPECT_EQ(m_Reports.Take(), "");
}

TEST_F(ParticleSimulationDefinitionTest, FailuresLeaveItAsItWas) {
    LoadText(EffectLines({SampleEmitter()}, {SampleAffector()}), m_Definition);
    ASSERT_EQ(m_Definition.SaveToFile(m_Archives, ArchiveFormat::Binary, m_Folder / "first"), SaveResult::Saved);
    m_Folder.Put("neither", "no archive\n");

    m_Definition.LoadFromFile(m_Archives, m_Folder / "missing");
    EXPECT_EQ(m_Reports.Count("Failed to Open File: '"), 1);
    m_Definition.LoadFromFile(m_Archives, m_Folder / "neither");
    EXPECT_EQ(m_Reports.Count("Could not detect if Archive File is Binary or Text: "), 2);
    EXPECT_EQ(m_Definition.SaveToFile(m_Archives, ArchiveFormat::Text, m_Folder / "missing/folder"),
              SaveResult::NotOpened);
    EXPECT_EQ(m_Reports.Count("file != NULL"), 1);

    EXPECT_EQ(m_Definition.GetName(), u"first");
    EXPECT_EQ(SaveLines(m_Definition), EffectLines({SampleEmitter()}, {SampleAffector()}));
    EXPECT_EQ(m_Archives.GetFileArchiveCount(), 0);
}

TEST_F(ParticleSimulationDefinitionTest, LongPathIsOpenedWholeAndRecordedCut) {
    std::string name;
    for (int i = 0; i < 3; ++i) {
        name += std::string(100, static_cast<char>('a' + i)) + "/";
        std::filesystem::create_directory(m_Folder.GetPath() / name);
    }
    name += "deep.particle";
    m_Folder.Put(name, kFile);
    m_Definition.LoadFromFile(m_Archives, m_Folder / name);
    EXPECT_EQ(SaveLines(m_Definition).find("HasInfiniteLifeTime FALSE\nTotalLifeTime 3.500000\n"), 0u);
    EXPECT_EQ(m_Definition.GetFilePath(), (m_Folder / name).substr(0, 255));
    EXPECT_EQ(m_Definition.GetName(), u"deep");
    EXPECT_EQ(m_Reports.Count("GetLength( source ) < destination.m_BufferSize"), 1);
    EXPECT_EQ(m_Reports.Count(""), 1);
}

} // namespace
} // namespace Corvid
