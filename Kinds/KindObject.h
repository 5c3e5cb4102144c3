#pragma once

#include <memory>
#include <string_view>

#include "Engine/Archive/Archive.h"
#include "Engine/Render/Mesh/MeshData.h"
#include "Engine/Render/Particle/ParticleSimulationDefinition.h"
#include "Engine/Window/BrushSystem.h"
#include "GS/Entity/EntityDef.h"
#include "Kinds/Kind.h"

namespace Corvid {

// What a data file holds, by the same operations whatever its kind. Loading takes an archive that stands at the start
// of the file's values; nothing is opened or closed here.
class KindObject {
public:
    virtual ~KindObject() = default;
    KindObject(const KindObject&) = delete;
    KindObject& operator=(const KindObject&) = delete;

    Kind GetKind() const { return m_Kind; }

    virtual void Load(Archive& archive) = 0;
    virtual void Save(Archive& archive) const = 0;
    virtual void ListFields(FieldListener& listener) const = 0;

    // The step between loading and saving that a conversion takes.
    virtual void Finish() {}

    // False when loading gave no object: an entity of an unknown type.
    virtual bool IsThere() const { return true; }

protected:
    explicit KindObject(Kind kind) : m_Kind(kind) {}

private:
    Kind m_Kind;
};

class MeshObject final : public KindObject {
public:
    MeshObject() : KindObject(Kind::Mesh) {}

    void Load(Archive& archive) override { archive.ReadLabeledObject(u"MeshData", m_Data); }
    void Save(Archive& archive) const override { archive.WriteLabeledObject(u"MeshData", m_Data); }
    void ListFields(FieldListener& listener) const override;

    MeshData m_Data;
};

class ParticleObject final : public KindObject {
public:
    ParticleObject() : KindObject(Kind::Particle) {}

    void Load(Archive& archive) override { archive.ReadLabeledObject(u"ParticleSimulation", m_Definition); }
    void Save(Archive& archive) const override { archive.WriteLabeledObject(u"ParticleSimulation", m_Definition); }
    void ListFields(FieldListener& listener) const override;
    void Finish() override { m_Definition.NormaliseEmitterFileNames(); } // no folders in the names that it holds

    ParticleSimulationDefinition m_Definition;
};

class BrushesObject final : public KindObject {
public:
    BrushesObject() : KindObject(Kind::Brushes) {}

    void Load(Archive& archive) override { m_Set.Load(archive); }
    void Save(Archive& archive) const override { m_Set.Save(archive); }
    void ListFields(FieldListener& listener) const override { m_Set.ListFields(listener); }

    BrushSystem::BrushSet m_Set;
};

class EntityObject final : public KindObject {
public:
    // Definitions are named after their file.
    explicit EntityObject(std::u16string_view path) : KindObject(Kind::Entity), m_Path(path) {}

    void Load(Archive& archive) override;
    void Save(Archive& archive) const override;
    void ListFields(FieldListener& listener) const override; // the type word, then the fields of the type
    bool IsThere() const override { return m_Definition != nullptr; }

    std::unique_ptr<EntityDef> m_Definition;

private:
    std::u16string m_Path;
};

// Empty, to be loaded. `path` names an entity definition; other kinds ignore it.
std::unique_ptr<KindObject> CreateKindObject(Kind kind, std::u16string_view path);

} // namespace Corvid
