#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "GS/Entity/EntitySystem.h"
#include "Tests/Support/ArchiveFixture.h"

namespace Corvid {

// Definitions over memory.
class EntityFixture : public ArchiveFixture {
protected:
    std::unique_ptr<EntityDef> LoadDefinition(const std::string& bytes, std::u16string_view path = u"Thing.entity") {
        std::unique_ptr<EntityDef> definition;
        LoadWith(bytes, [&](FileArchive& archive) { definition = m_Entities.ReadDefinition(archive, path); });
        return definition;
    }

    // Empty when there is no definition.
    std::string Convert(const std::string& bytes, ArchiveFormat format) {
        const std::unique_ptr<EntityDef> definition = LoadDefinition(bytes);
        if (definition == nullptr)
            return "";
        return SaveWith(format, [&](FileArchive& archive) { EntitySystem::WriteDefinition(archive, *definition); });
    }

    EntitySystem m_Entities;
};

} // namespace Corvid
