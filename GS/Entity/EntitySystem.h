#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

#include "Engine/Archive/FileArchiveSystem.h"
#include "GS/Entity/EntityDef.h"

namespace Corvid {

// Loads and saves definition files: the word of the type, then the record of that type's definition class.
class EntitySystem {
public:
    // The definition is named after the file, without folders and extension. Null when the file cannot be loaded, its
    // type is unknown or has no class, its layout is incomplete and the file holds more than what is known of it, or
    // the name has EntityDefName::kCapacity UTF-16 units or more.
    std::unique_ptr<EntityDef> LoadDefinition(FileArchiveSystem& archives, std::u16string_view path);

    SaveResult SaveDefinition(FileArchiveSystem& archives, const EntityDef& definition, std::u16string_view path,
                              ArchiveFormat format);

    // The same over an open archive; `path` gives the name.
    std::unique_ptr<EntityDef> ReadDefinition(FileArchive& archive, std::u16string_view path);
    // From any archive, by the name of the definition itself.
    static std::unique_ptr<EntityDef> ReadDefinitionNamed(Archive& archive, std::u16string_view name);
    static void WriteDefinition(Archive& archive, const EntityDef& definition);

    // Over the values of every archive opened so far, with wrap-around, whether or not it gave a definition.
    std::uint32_t GetChecksumTotal() const { return m_ChecksumTotal; }

private:
    std::uint32_t m_ChecksumTotal = 0;
};

} // namespace Corvid
