#include "Corvid/Commands/Import.h"

#include <utility>

#include "Corvid/Commands/SingleFile.h"
#include "Corvid/Files/FileStatus.h"
#include "Corvid/Files/PrintedPath.h"
#include "Corvid/Gltf/GltfFile.h"
#include "Corvid/Gltf/GltfToMesh.h"

namespace Corvid {

namespace {

// Reads the files that one of a folder names.
class Neighbours {
public:
    explicit Neighbours(const std::string& path) : m_Folder(path) {
        while (!m_Folder.empty() && !IsPathSeparator(m_Folder.back()))
            m_Folder.pop_back();
    }

    std::optional<GltfBytes> Read(const std::string& name) {
        const std::string path = m_Folder + name;
        const ReadResult read = ReadFoundFile(path);
        if (read.m_Error.empty())
            return GltfBytes(read.m_Bytes.begin(), read.m_Bytes.end());
        m_Error = PrintedPath(path) + ": " + read.m_Error;
        return std::nullopt;
    }

    const std::string& GetError() const { return m_Error; }

private:
    std::string m_Folder; // with its last separator
    std::string m_Error;
};

DiagnosticCode CodeOf(const std::string& error) {
    return error.starts_with("not glTF")              ? DiagnosticCode::NotAnArchive
           : error.starts_with("needs the extension") ? DiagnosticCode::Refused
                                                      : DiagnosticCode::BadValue;
}

bool MakeMesh(const ListedFile& file, MeshData& mesh, FileOutcome& outcome) {
    const std::optional<std::string> bytes = ReadListedFile(file, outcome);
    if (!bytes)
        return false;
    Neighbours neighbours(file.m_Path);
    GltfDocument document;
    std::vector<std::string> leftOut;
    std::string error;
    const bool isMade = ReadGltf(
                            {reinterpret_cast<const unsigned char*>(bytes->data()), bytes->size()},
                            [&](const std::string& name) { return neighbours.Read(name); }, document, error) &&
                        TakeGltf(document, mesh, leftOut, error);
    for (const std::string& what : leftOut)
        outcome.m_Log.Add(DiagnosticCode::NotImported, {}, {}, what + ": a mesh has no place for this");
    if (isMade)
        return true;
    if (!neighbours.GetError().empty())
        AddFailure(outcome, DiagnosticCode::CannotRead, neighbours.GetError());
    else
        outcome.m_Log.Add(CodeOf(error), {}, {}, error);
    return false;
}

void Import(const ListedFile& file, const ImportOptions& options, FileOutcome& outcome) {
    MeshObject mesh;
    if (!MakeMesh(file, mesh.m_Data, outcome))
        return;
    std::optional<std::string> bytes = SaveToBytes(mesh, ArchiveFormat::Binary, FloatPrecision::Exact);
    if (bytes && options.m_Format == ArchiveFormat::Text) {
        // A name may hold what text cannot: the mesh is converted as any other.
        LoadOptions load;
        load.m_Kind = Kind::Mesh;
        load.m_IsForText = true;
        LoadedFile loaded = LoadFromBytes(std::move(*bytes), u"", load);
        outcome.m_Log.Append(std::move(loaded.m_Log));
        if (outcome.m_Log.HasErrors())
            return;
        bytes = loaded.m_Object != nullptr ? SaveToBytes(*loaded.m_Object, ArchiveFormat::Text, FloatPrecision::Exact)
                                           : std::nullopt;
    }
    if (bytes)
        DeliverSingleFile(options.m_Output, *bytes, outcome);
    else
        AddFailure(outcome, DiagnosticCode::CannotWrite, "there is not enough memory");
}

} // namespace

void DeclareCommand(CommandDeclaration& declaration, ImportOptions& options) {
    declaration.Describe("Makes a mesh of a GLB or glTF file.", "IN.glb|IN.gltf -o OUT.mesh [OPTION]...");
    declaration.Explain(
        "All that the shown scene holds becomes one mesh; empty nodes become points. Normals, tangents, "
        "extents and the radius are computed where the file has none. What a mesh has no place for is "
        "a warning. Buffers beside the file are read when they are in its folder.");
    declaration.Operands("IN", options.m_Paths, 1, 1, "a GLB or glTF 2.0 file of any tool");
    declaration.Text("-o,--output", "OUT", options.m_Output, "write to OUT, a .mesh file", ValueRole::File);
    declaration.Require();
    declaration.OneOf("--to", options.m_Format,
                      std::vector<std::pair<std::string, ArchiveFormat>>{{"txt", ArchiveFormat::Text},
                                                                         {"bin", ArchiveFormat::Binary}},
                      "the encoding to write (default: bin)");
    DeclareDiagnostics(declaration, options.m_Diagnostics);
    DeclareLook(declaration, options.m_Look);
    declaration.Example("corvid import cube.glb -o cube.mesh", "a mesh out of a modelling tool");
    declaration.Example("corvid import --to txt cube.glb -o cube.mesh", "the same as text");
}

int RunCommand(const ImportOptions& options, Console& console) {
    if (!HasExtension(options.m_Output, ".mesh"))
        return console.PrintUsageError("import", "'" + PrintedPath(options.m_Output) + "' has to end with .mesh");
    return RunOnSingleFile("import", options.m_Paths[0], options.m_Output, options.m_Diagnostics, options.m_Look,
                           console,
                           [&](const ListedFile& file, FileOutcome& outcome) { Import(file, options, outcome); });
}

} // namespace Corvid
