#include "GS/Entity/EntitySystem.h"

#include <utility>

#include "Engine/File/PathParts.h"
#include "GS/Entity/EntityTypeTable.h"

namespace Corvid {

std::unique_ptr<EntityDef> EntitySystem::ReadDefinitionNamed(Archive& archive, std::u16string_view name) {
    EntityType type = EntityType::Invalid;
    ReadValue(archive, u"entityType", type);
    if (name.size() >= EntityDefName::kCapacity) {
        ReportMessage(Message::EntityNameTooLong, {name});
        return nullptr;
    }
    std::unique_ptr<EntityDef> definition = CreateEntityDef(type, EntityDefName(name));
    if (definition == nullptr)
        return nullptr;
    if (!FindEntityType(type)->m_IsLayoutSettled)
        ReportMessage(Message::IncompleteLayout, {std::u16string_view(WordOf(type))});
    definition->Load(archive);
    return definition;
}

std::unique_ptr<EntityDef> EntitySystem::LoadDefinition(FileArchiveSystem& archives, std::u16string_view path) {
    std::unique_ptr<EntityDef> definition;
    archives.Load(path, [&](FileArchive& archive) {
        definition = ReadDefinition(archive, path);
        if (definition == nullptr || FindEntityType(definition->GetType())->m_IsLayoutSettled)
            return definition != nullptr;
        // The known blocks may have been read from the place of others: what would be lost, or made up, stays.
        if (archive.ReportUnreadInput() || archive.HasCutValue()) {
            ReportMessage(Message::DefinitionNotWritten, {std::u16string_view(definition->GetName().GetText())});
            definition.reset();
        }
        return false; // the rest of the input has been reported
    });
    return definition;
}

SaveResult EntitySystem::SaveDefinition(FileArchiveSystem& archives, const EntityDef& definition,
                                        std::u16string_view path, ArchiveFormat format) {
    return archives.Save(path, format, [&definition](FileArchive& archive) { WriteDefinition(archive, definition); });
}

std::unique_ptr<EntityDef> EntitySystem::ReadDefinition(FileArchive& archive, std::u16string_view path) {
    std::unique_ptr<EntityDef> definition = ReadDefinitionNamed(archive, SplitPath(path).m_Name);
    m_ChecksumTotal += archive.GetChecksum();
    return definition;
}

void EntitySystem::WriteDefinition(Archive& archive, const EntityDef& definition) {
    WriteValue(archive, u"entityType", definition.GetType());
    definition.Save(archive);
}

} // namespace Corvid
