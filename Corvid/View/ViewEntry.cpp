#include "Corvid/View/ViewEntry.h"

#include "Corvid/Gltf/GltfFile.h"
#include "Corvid/Gltf/MeshToGltf.h"
#include "Corvid/Json/ValueJson.h"
#include "Corvid/Values/ValueTreeWriter.h"
#include "Engine/File/PathParts.h"
#include "Engine/String/Unicode.h"

namespace Corvid {

namespace {

std::string ListsJson(const CachedVertexIndices& lists) {
    std::string json = "[";
    for (int direction = 0; direction < kDirectionCount; ++direction) {
        json += direction == 0 ? "[" : ",[";
        const VertexIndexVector& list = lists[direction];
        for (int i = 0; i < list.GetSize(); ++i)
            json.append(i == 0 ? "" : ",").append(std::to_string(list[i]));
        json += "]";
    }
    return json + "]";
}

// Vertices and triangles go into the model, and out of the object: there they would take many times as much.
void TakeModel(MeshData& mesh, std::string_view path, ViewEntry& entry, std::string& error) {
    entry.m_VertexLists = ListsJson(mesh.GetCachedVertexIndices());
    if (!WriteGlb(MakeGltf(mesh, SplitPath(ToUtf16(path)).m_Name, {}), entry.m_Model, error))
        entry.m_Model.clear();
    mesh.m_Vertices.SetSize(0);
    mesh.m_Triangles.SetSize(0);
}

} // namespace

ViewEntry MakeViewEntry(std::string_view path, LoadedFile& loaded, const DiagnosticLog& log, std::string& modelError) {
    ViewEntry entry;
    entry.m_Path = path;
    if (loaded.m_Kind)
        entry.m_Kind = WordOf(*loaded.m_Kind);
    if (loaded.m_Encoding)
        entry.m_Encoding = *loaded.m_Encoding == ArchiveFormat::Text ? "text" : "binary";
    entry.m_EntityType = loaded.m_EntityType;
    entry.m_Size = loaded.m_Size;
    AddDiagnostics(entry, log);

    KindObject* const object = loaded.m_Readable != nullptr ? loaded.m_Readable.get() : loaded.m_Object.get();
    if (object == nullptr)
        return entry;
    if (object->GetKind() == Kind::Mesh)
        TakeModel(static_cast<MeshObject*>(object)->m_Data, path, entry, modelError);
    entry.m_Values = JsonOf(ValuesOf(*object), JsonLook::OneLine);
    return entry;
}

void AddDiagnostics(ViewEntry& entry, const DiagnosticLog& log) {
    for (const Diagnostic& diagnostic : log.GetAll()) {
        entry.m_ErrorCount += diagnostic.m_Severity == Severity::Error;
        entry.m_WarningCount += diagnostic.m_Severity == Severity::Warning;
    }
    entry.m_Diagnostics = SelectShown(log, {});
}

} // namespace Corvid
