#pragma once

#include <memory>

#include "Engine/Archive/FileArchive.h"
#include "Engine/Render/Mesh/MeshData.h"
#include "Engine/Render/Particle/ParticleSimulationDefinition.h"
#include "Engine/Window/BrushSystem.h"
#include "GS/Entity/EntitySystem.h"

namespace Corvid::Fuzz {

// Every kind of file by the same operations: what it holds, how that is loaded, finished and saved.

struct Mesh {
    using Object = MeshData;
    static constexpr bool kIsRecomputed = true; // its lists come from the values before they are rounded

    static void Load(FileArchive& archive, Object& mesh) { archive.ReadLabeledObject(u"MeshData", mesh); }
    static void Finish(Object&) {}
    static bool IsThere(const Object&) { return true; }
    static void Save(FileArchive& archive, const Object& mesh) { archive.WriteLabeledObject(u"MeshData", mesh); }
};

struct Particle {
    using Object = ParticleSimulationDefinition;
    static constexpr bool kIsRecomputed = false;

    static void Load(FileArchive& archive, Object& effect) { archive.ReadLabeledObject(u"ParticleSimulation", effect); }
    static void Finish(Object& effect) { effect.NormaliseEmitterFileNames(); }
    static bool IsThere(const Object&) { return true; }
    static void Save(FileArchive& archive, const Object& effect) {
        archive.WriteLabeledObject(u"ParticleSimulation", effect);
    }
};

struct Brushes {
    using Object = BrushSystem::BrushSet;
    static constexpr bool kIsRecomputed = false;

    static void Load(FileArchive& archive, Object& brushes) { brushes.Load(archive); }
    static void Finish(Object&) {}
    static bool IsThere(const Object&) { return true; }
    static void Save(FileArchive& archive, const Object& brushes) { brushes.Save(archive); }
};

struct Entity {
    using Object = std::unique_ptr<EntityDef>; // null where the file gives none
    static constexpr bool kIsRecomputed = false;

    static void Load(FileArchive& archive, Object& definition) {
        definition = EntitySystem().ReadDefinition(archive, u"memory.entity");
    }
    static void Finish(Object&) {}
    static bool IsThere(const Object& definition) { return definition != nullptr; }
    static void Save(FileArchive& archive, const Object& definition) {
        if (definition != nullptr)
            EntitySystem::WriteDefinition(archive, *definition);
    }
};

} // namespace Corvid::Fuzz
