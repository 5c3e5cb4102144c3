#include "Recast/Conversions.h"

#include <memory>

#include "Engine/Render/Mesh/MeshSystem.h"
#include "Engine/Render/Particle/ParticleSimulationDefinition.h"
#include "Engine/Window/BrushSystem.h"
#include "GS/Entity/EntitySystem.h"

namespace Corvid {

void ConvertMesh(FileArchiveSystem& archives, std::u16string_view source, std::u16string_view destination,
                 ArchiveFormat format) {
    MeshSystem meshes(archives);
    meshes.GetSettings().m_Destination = destination;
    MeshReference mesh = meshes.Load(source, MeshLoadParameters());
    if (mesh.Get() != nullptr)
        mesh.Get()->m_Data.SaveToFile(archives, format, destination);
    else
        Mesh::Data().SaveToFile(archives, format, destination);
    mesh.Release();
    meshes.ShutDown();
}

void ConvertParticle(FileArchiveSystem& archives, std::u16string_view source, std::u16string_view destination,
                     ArchiveFormat format) {
    const auto definition = std::make_unique<ParticleSimulationDefinition>();
    definition->LoadFromFile(archives, source);
    definition->NormaliseEmitterFileNames();
    definition->SaveToFile(archives, format, destination);
}

void ConvertBrushes(FileArchiveSystem& archives, std::u16string_view source, std::u16string_view destination,
                    ArchiveFormat format) {
    BrushSystem::BrushSet brushes;
    brushes.SetFileName(source);
    BrushSystem::LoadBrushSet(archives, brushes, source);
    BrushSystem::SaveBrushSet(archives, brushes, destination, format);
    BrushSystem::ReleaseTextures(brushes);
    brushes.Clear();
}

void ConvertEntity(FileArchiveSystem& archives, std::u16string_view source, std::u16string_view destination,
                   ArchiveFormat format) {
    EntitySystem entities;
    const std::unique_ptr<EntityDef> definition = entities.LoadDefinition(archives, source);
    if (definition != nullptr)
        entities.SaveDefinition(archives, *definition, destination, format);
}

} // namespace Corvid
