#pragma once

#include <memory>
#include <string_view>

#include "Engine/Archive/FileArchiveSystem.h"
#include "Engine/Archive/Record.h"
#include "Engine/DataStructures/FixedVector.h"
#include "Engine/Render/Particle/ParticleAffectorFactory.h"
#include "Engine/Render/Particle/ParticleEmitterFactory.h"
#include "Engine/String/FixedString.h"

namespace Corvid {

// One particle effect: its life time, the emitters that spawn its particles and the affectors that act on them. Owns
// both; an entry of a list is null where a file names a type without a class.
class ParticleSimulationDefinition final : public Record<ParticleSimulationDefinition>, public FileObject {
public:
    using Emitters = FixedVector<std::unique_ptr<ParticleEmitter>, ParticleAffector::kEmitterSlots>;
    using Affectors = FixedVector<std::unique_ptr<ParticleAffector>, 30>;

    ParticleSimulationDefinition() = default;
    ~ParticleSimulationDefinition();
    ParticleSimulationDefinition(const ParticleSimulationDefinition&) = delete; // its affectors point to it
    ParticleSimulationDefinition& operator=(const ParticleSimulationDefinition&) = delete;

    static void Fields(auto& self, auto& fields) {
        fields.Value(u"HasInfiniteLifeTime", self.m_HasInfiniteLifeTime);
        fields.Value(u"TotalLifeTime", self.m_TotalLifeTime);
        fields.template Objects<EmitterType>(
            u"NumEmitters", u"EmitterType", u"EmitterContents", {u"NumAffectors", u"AffectorType", u"length"},
            self.m_Emitters, CreateEmitter,
            [&] { fields.AfterLoad(self, [](auto& definition) { definition.ResolveAttachments(); }); });
        fields.template Objects<AffectorType>(u"NumAffectors", u"AffectorType", u"AffectorContents", {u"length"},
                                              self.m_Affectors,
                                              [&](AffectorType type) { return CreateAffector(type, self); });
        fields.Value(u"length", self.m_Length);
    }

    const Emitters& GetEmitters() const { return m_Emitters; }
    const Affectors& GetAffectors() const { return m_Affectors; }

    // The file that was loaded or saved last, cut (and reported) when it is longer, and its base name.
    const FixedString<256>& GetFilePath() const { return m_FilePath; }
    const FixedString<256>& GetName() const { return m_Name; }

    // Appends to what is there. Leaves everything as it is when the file cannot be opened or is no archive.
    LoadResult LoadFromFile(FileArchiveSystem& system, std::u16string_view path);

    // Takes drives and folders off all file names that the emitters hold.
    void NormaliseEmitterFileNames();

    SaveResult SaveToFile(FileArchiveSystem& system, ArchiveFormat format, std::u16string_view path);

private:
    // Of every affector that is there. A new emitter has not read its name yet: it counts at the next time.
    void ResolveAttachments();
    void RecordPath(std::u16string_view path);

    FixedString<256> m_FilePath;
    FixedString<256> m_Name;
    float m_TotalLifeTime = 10.0f;
    bool m_HasInfiniteLifeTime = false;
    Emitters m_Emitters;
    Affectors m_Affectors;
    float m_Length = 0.0f;
};

} // namespace Corvid
