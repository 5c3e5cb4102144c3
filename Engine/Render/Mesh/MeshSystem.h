#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "Engine/Archive/FileArchiveSystem.h"
#include "Engine/DataStructures/FixedVector.h"
#include "Engine/Render/Mesh/Mesh.h"

namespace Corvid {

// One user's hold on a mesh, which lives as long as a user or the mesh system has it. The mesh counts its users, unless
// it is standalone.
class MeshReference {
public:
    MeshReference() = default;
    explicit MeshReference(std::shared_ptr<Mesh> mesh);
    MeshReference(MeshReference&& other) noexcept;
    MeshReference& operator=(MeshReference&& other) noexcept;
    ~MeshReference() { Release(); }

    void Release();
    Mesh* Get() const { return m_Mesh.get(); }

private:
    std::shared_ptr<Mesh> m_Mesh;
};

// Loads meshes by path, each file once.
class MeshSystem {
public:
    static constexpr int kMaxMeshes = 800;
    static constexpr int kMaxMockPoints = 10;

    // What the system can be told to do; the defaults are the converter's.
    struct Settings {
        MeshName m_SubFolder;         // where meshes are searched for; empty: paths are taken as they stand
        std::u16string m_Destination; // that the run is about to write: the search passes over it
        bool m_IsLoadingEnabled = true;
        bool m_IsMockMode = false; // no file is read: every mesh is made up from the two values below
        float m_MockRadius = 0.0f;
        FixedVector<MeshName, kMaxMockPoints> m_MockPointNames;
    };

    explicit MeshSystem(FileArchiveSystem& archives) : m_Archives(archives) {}
    ~MeshSystem() { ShutDown(); }
    MeshSystem(const MeshSystem&) = delete;
    MeshSystem& operator=(const MeshSystem&) = delete;

    Settings& GetSettings() { return m_Settings; }

    // An empty reference, with a report, when there is no such mesh.
    MeshReference Load(std::u16string_view path, const MeshLoadParameters& parameters);

    // Gives up every mesh, first loaded first. One that is still in use goes with its last reference.
    void ShutDown();

    int GetMeshCount() const { return m_Meshes.GetSize(); }
    std::chrono::nanoseconds GetTotalLoadTime() const { return m_TotalLoadTime; }

private:
    MeshReference MakeMock(std::u16string_view path, const MeshLoadParameters& parameters) const;
    std::optional<std::u16string> Resolve(std::u16string_view path) const;
    std::shared_ptr<Mesh> Find(std::u16string_view resolvedPath) const;
    std::shared_ptr<Mesh> Add(std::u16string_view resolvedPath, const MeshLoadParameters& parameters);

    struct LoadedMesh {
        std::u16string m_Path; // whole, even where the mesh's own record of it is cut
        std::shared_ptr<Mesh> m_Mesh;
    };

    FileArchiveSystem& m_Archives;
    Settings m_Settings;
    FixedVector<LoadedMesh, kMaxMeshes> m_Meshes;
    std::chrono::nanoseconds m_TotalLoadTime{0};
};

} // namespace Corvid
