#include "Engine/Render/Mesh/MeshSystem.h"

#include <utility>

#include "Engine/File/NativePath.h"
#include "Engine/File/PathParts.h"

namespace Corvid {

MeshReference::MeshReference(std::shared_ptr<Mesh> mesh) : m_Mesh(std::move(mesh)) {
    if (!m_Mesh->m_IsStandalone)
        ++m_Mesh->m_ReferenceCount;
}

MeshReference::MeshReference(MeshReference&& other) noexcept : m_Mesh(std::move(other.m_Mesh)) {}

MeshReference& MeshReference::operator=(MeshReference&& other) noexcept {
    Release();
    m_Mesh = std::move(other.m_Mesh);
    return *this;
}

void MeshReference::Release() {
    if (m_Mesh != nullptr && !m_Mesh->m_IsStandalone)
        --m_Mesh->m_ReferenceCount;
    m_Mesh.reset();
}

MeshReference MeshSystem::Load(std::u16string_view path, const MeshLoadParameters& parameters) {
    if (m_Settings.m_IsMockMode)
        return MakeMock(path, parameters);
    const std::optional<std::u16string> resolvedPath = Resolve(path);
    if (!resolvedPath) {
        ReportMessage(Message::MeshNotFound, {path});
        return {};
    }
    std::shared_ptr<Mesh> mesh = Find(*resolvedPath);
    if (mesh == nullptr)
        mesh = Add(*resolvedPath, parameters);
    if (mesh == nullptr)
        return {};
    if (m_Settings.m_IsLoadingEnabled && mesh->m_Data.m_IsLoaded == 0) {
        const auto start = std::chrono::steady_clock::now();
        mesh->m_Data.LoadFromFile(m_Archives, *resolvedPath);
        m_TotalLoadTime += std::chrono::steady_clock::now() - start;
    } else if (mesh->m_Data.m_FileName.IsEmpty()) {
        mesh->m_Data.m_FileName = *resolvedPath;
    }
    return MeshReference(std::move(mesh));
}

MeshReference MeshSystem::MakeMock(std::u16string_view path, const MeshLoadParameters& parameters) const {
    auto mesh = std::make_shared<Mesh>(parameters);
    mesh->m_IsStandalone = true;
    mesh->m_Data.m_FileName = path;
    mesh->m_Data.m_BoundingRadius = m_Settings.m_MockRadius;
    mesh->m_Data.m_Points.SetSize(m_Settings.m_MockPointNames.GetSize());
    const MeshName* name = m_Settings.m_MockPointNames.begin();
    for (MeshPoint& point : mesh->m_Data.m_Points) {
        point.m_DataString = *name++;
        point.m_Orientation = Matrix33::Identity();
    }
    return MeshReference(std::move(mesh));
}

// A path that is no file is searched for by its file part, in the mesh sub-folder of the current folder.
std::optional<std::u16string> MeshSystem::Resolve(std::u16string_view path) const {
    const std::u16string_view subFolder = m_Settings.m_SubFolder.GetView();
    if (subFolder.empty() && GetPathKind(path) == PathKind::File)
        return std::u16string(path);

    const std::u16string name = std::u16string(SplitPath(path).m_Name) + u".mesh";
    const std::u16string found = subFolder.empty() ? name : std::u16string(subFolder) + u"/" + name;
    if (GetPathKind(found) != PathKind::File || IsSameFile(found, m_Settings.m_Destination)) {
        ReportMessage(Message::DataFileNotFound, {std::u16string_view(name), subFolder});
        return std::nullopt;
    }
    if (found != path)
        ReportMessage(Message::OtherMeshFileUsed, {path, std::u16string_view(found)});
    return found;
}

std::shared_ptr<Mesh> MeshSystem::Find(std::u16string_view resolvedPath) const {
    for (const LoadedMesh& loaded : m_Meshes) {
        if (loaded.m_Path == resolvedPath)
            return loaded.m_Mesh;
    }
    return nullptr;
}

// Null when the list is full: a mesh that is on no list would have no owner.
std::shared_ptr<Mesh> MeshSystem::Add(std::u16string_view resolvedPath, const MeshLoadParameters& parameters) {
    auto mesh = std::make_shared<Mesh>(parameters);
    const int count = m_Meshes.GetSize();
    LoadedMesh& loaded = m_Meshes.Append();
    if (m_Meshes.GetSize() == count)
        return nullptr;
    loaded = {std::u16string(resolvedPath), mesh};
    return mesh;
}

void MeshSystem::ShutDown() {
    for (LoadedMesh& loaded : m_Meshes)
        loaded.m_Mesh.reset();
    m_Meshes.Clear();
}

} // namespace Corvid
