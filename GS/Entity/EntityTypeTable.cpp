#include "GS/Entity/EntityTypeTable.h"

namespace Corvid {

const EntityTypeRow* FindEntityType(EntityType type) {
    const auto index = static_cast<unsigned>(type);
    return index < std::size(kEntityTypes) ? &kEntityTypes[index] : nullptr;
}

std::unique_ptr<EntityDef> CreateEntityDef(EntityType type, const EntityDefName& name) {
    const EntityTypeRow* const row = FindEntityType(type);
    if (row == nullptr || row->m_Create == nullptr)
        return nullptr;
    std::unique_ptr<EntityDef> definition = row->m_Create();
    definition->SetIdentity(type, name);
    return definition;
}

} // namespace Corvid
