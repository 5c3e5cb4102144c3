#pragma once

#include "Engine/Archive/Record.h"
#include "GS/Entity/EntityDefName.h"
#include "GS/Entity/EntityType.h"

namespace Corvid {

// The base of every entity definition. A definition's record is what follows the word of its type in the file; its
// name is the file's own and not in the record.
class EntityDef : public Archivable {
public:
    EntityDef() = default;
    EntityDef(const EntityDef&) = delete;
    EntityDef& operator=(const EntityDef&) = delete;
    virtual ~EntityDef() = default;

    const EntityDefName& GetName() const { return m_Name; }
    EntityType GetType() const { return m_Type; }

    void SetIdentity(EntityType type, const EntityDefName& name) {
        m_Type = type;
        m_Name = name;
    }

private:
    EntityDefName m_Name;
    EntityType m_Type = EntityType::Invalid;
};

} // namespace Corvid
