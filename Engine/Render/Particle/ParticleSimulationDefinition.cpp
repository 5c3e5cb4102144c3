#include "Engine/Render/Particle/ParticleSimulationDefinition.h"

#include "Engine/File/PathParts.h"

namespace Corvid {

ParticleSimulationDefinition::~ParticleSimulationDefinition() {
    // All emitters let their textures go before the first of them is destroyed.
    for (const auto& emitter : m_Emitters) {
        if (emitter != nullptr)
            emitter->ReleaseTextures();
    }
    // Letting go again finds nothing by now; it keeps the destruction of each emitter complete in itself.
    for (auto& emitter : m_Emitters) {
        if (emitter != nullptr)
            emitter->ReleaseTextures();
        emitter.reset();
    }
    m_Emitters.Clear();
    m_Affectors.Clear();
}

LoadResult ParticleSimulationDefinition::LoadFromFile(FileArchiveSystem& system, std::u16string_view path) {
    const LoadResult result = system.Load(path, *this, [this](FileArchive& archive) {
        archive.ReadLabeledObject(u"ParticleSimulation", *this);
        return true;
    });
    if (result != LoadResult::NotOpened)
        RecordPath(path);
    return result;
}

void ParticleSimulationDefinition::NormaliseEmitterFileNames() {
    for (const auto& emitter : m_Emitters) {
        if (emitter != nullptr)
            emitter->NormaliseFileNames();
    }
}

SaveResult ParticleSimulationDefinition::SaveToFile(FileArchiveSystem& system, ArchiveFormat format,
                                                    std::u16string_view path) {
    const SaveResult result = system.Save(path, format, *this, [this](FileArchive& archive) {
        archive.WriteLabeledObject(u"ParticleSimulation", *this);
    });
    if (result == SaveResult::Saved || result == SaveResult::Failed) // it was opened
        RecordPath(path);
    return result;
}

void ParticleSimulationDefinition::ResolveAttachments() {
    for (const auto& affector : m_Affectors) {
        if (affector != nullptr)
            affector->ResolveAttachments();
    }
}

void ParticleSimulationDefinition::RecordPath(std::u16string_view path) {
    m_FilePath = path;
    m_Name = SplitPath(path).m_Name;
}

} // namespace Corvid
