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

// One user's hold on a mesh. A standalone mesh goes with its reference; for any other it counts.
class MeshReference {
public:
    MeshReference() = default;
    explicit MeshReference(Mesh& shared); // counts; the mesh system outlives the reference
    explicit MeshReference(std::unique_ptr<Mesh> standalone);
    MeshReference(MeshReference&& other) noexcept;
    MeshReference& operator=(MeshReference&& other) noexcept;
    ~MeshReference() { Release(); }

    void Release();
    Mesh* Get() const { return m_Mesh; }

private:
    Mesh* m_Mesh = nullptr;
    std::unique_ptr<Mesh> m_Standalone;
};

// Loads meshes by path, each file once.
class MeshSystem {
public:
    static constexpr int kMaxMeshes = 800;
    static constexpr int kMaxMockPoints = 10;

    // What the system can be told to do; the defaults are the converter's.
    struct Settings {
        MeshName m_SubFolder; // where meshes are searched for; empty: paths are taken as they stand
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

    // Destroys every mesh, first loaded first.
    void ShutDown();

    int GetMeshCount() const { return m_Meshes.GetSize(); }
    std::chrono::nanoseconds GetTotalLoadTime() const { return m_TotalLoadTime; }

private:
    MeshReference MakeMock(std::u16string_view path, const MeshLoadParameters& parameters) const;
    std::optional<std::u16string> Resolve(std::u16string_view path) const;
    Mesh* Find(std::u16string_view resolvedPath);
    Mesh* Add(std::u16string_view resolvedPath, const MeshLoadParameters& parameters);

    struct LoadedMesh {
        std::u16string m_Path; // whole, even where the mesh's own record of it is cut
        std::unique_ptr<Mesh> m_Mesh;
    };

    FileArchiveSystem& m_Archives;
    Settings m_Settings;
    FixedVector<LoadedMesh, kMaxMeshes> m_Meshes;
    std::chrono::nanoseconds m_TotalLoadTime{0};
};

} // namespace Corvid
