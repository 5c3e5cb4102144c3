#include "Kinds/KindObject.h"

#include <typeinfo>

#include "Engine/Archive/FieldListener.h"
#include "Engine/File/PathParts.h"
#include "Engine/String/ClassName.h"
#include "GS/Entity/EntitySystem.h"
#include "GS/Entity/EntityTypeTable.h"

namespace Corvid {

namespace {

void ListRecord(FieldListener& listener, Label label, const Archivable& record) {
    listener.BeginRecord(label, ClassNameOf(typeid(record)));
    record.ListFields(listener);
    listener.EndRecord();
}

} // namespace

void MeshObject::ListFields(FieldListener& listener) const {
    ListRecord(listener, u"MeshData", m_Data);
}

void ParticleObject::ListFields(FieldListener& listener) const {
    ListRecord(listener, u"ParticleSimulation", m_Definition);
}

void EntityObject::Load(Archive& archive) {
    m_Definition = EntitySystem::ReadDefinitionNamed(archive, SplitPath(m_Path).m_Name);
}

void EntityObject::Save(Archive& archive) const {
    if (m_Definition != nullptr)
        EntitySystem::WriteDefinition(archive, *m_Definition);
}

void EntityObject::ListFields(FieldListener& listener) const {
    FieldShape type;
    type.m_Kind = FieldKind::Word;
    type.m_Capacity = kWordCapacity;
    type.m_Words = EnumWords<EntityType>::Words;
    listener.Value(u"entityType", type);
    if (m_Definition != nullptr)
        m_Definition->ListFields(listener);
}

std::unique_ptr<KindObject> CreateKindObject(Kind kind, std::u16string_view path) {
    switch (kind) {
    case Kind::Mesh:
        return std::make_unique<MeshObject>();
    case Kind::Particle:
        return std::make_unique<ParticleObject>();
    case Kind::Brushes:
        return std::make_unique<BrushesObject>();
    case Kind::Entity:
        return std::make_unique<EntityObject>(path);
    }
    return nullptr;
}

} // namespace Corvid
