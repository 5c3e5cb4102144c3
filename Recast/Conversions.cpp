#include "Recast/Conversions.h"

#include <memory>

#include "Engine/Render/Mesh/MeshSystem.h"
#include "Engine/Window/BrushSystem.h"
#include "GS/Entity/EntitySystem.h"
#include "Kinds/KindObject.h"

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
    const auto effect = std::make_unique<ParticleObject>();
    effect->m_Definition.LoadFromFile(archives, source);
    effect->Finish();
    effect->m_Definition.SaveToFile(archives, format, destination);
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
