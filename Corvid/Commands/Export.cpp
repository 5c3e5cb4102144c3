#include "Corvid/Commands/Export.h"

#include <array>
#include <utility>

#include "Corvid/Commands/SingleFile.h"
#include "Corvid/Files/FileStatus.h"
#include "Corvid/Files/PrintedPath.h"
#include "Corvid/Files/TextureFolder.h"
#include "Corvid/Gltf/GltfFile.h"
#include "Corvid/Gltf/MeshToGltf.h"
#include "Corvid/Json/ValueJson.h"
#include "Corvid/Svg/BrushSheet.h"
#include "Corvid/Values/ValueTreeWriter.h"
#include "Engine/File/PathParts.h"
#include "Engine/String/Unicode.h"

namespace Corvid {

namespace {

// What an extension stands for, and the one kind that can be written so.
struct Form {
    std::string_view m_Extension;
    std::optional<Kind> m_Kind; // nothing: any
};

constexpr Form kForms[] = {{".glb", Kind::Mesh}, {".svg", Kind::Brushes}, {".json", std::nullopt}};

const Form* FindForm(const std::string& output) {
    for (const Form& form : kForms) {
        if (HasExtension(output, form.m_Extension))
            return &form;
    }
    return nullptr;
}

std::string ListOfForms(Kind kind) {
    std::string list;
    for (const Form& form : kForms) {
        if (!form.m_Kind || *form.m_Kind == kind)
            list += (list.empty() ? "" : " or ") + std::string(form.m_Extension);
    }
    return list;
}

std::string NameOf(const ListedFile& file) {
    return ToUtf8(SplitPath(EnginePath(file.m_Path)).m_Name);
}

// The bytes of a GLB; errors and textures that are not found stand in the outcome.
std::string GlbOf(const MeshData& mesh, const ListedFile& file, const ExportOptions& options, FileOutcome& outcome) {
    TextureReader readTexture;
    std::optional<TextureFolder> folder;
    if (options.m_TextureFolder) {
        folder.emplace(*options.m_TextureFolder);
        if (!folder->GetError().empty()) {
            AddFailure(outcome, DiagnosticCode::CannotRead,
                       PrintedPath(*options.m_TextureFolder) + ": " + folder->GetError());
            return {};
        }
        readTexture = [&](std::u16string_view name) {
            std::string problem;
            std::optional<std::string> bytes = folder->ReadPicture(name, problem);
            if (!bytes)
                outcome.m_Log.Add(DiagnosticCode::MissingReference, {}, {}, std::move(problem));
            return bytes;
        };
    }
    std::string bytes, error;
    if (!WriteGlb(MakeGltf(mesh, ToUtf16(NameOf(file)), readTexture), bytes, error))
        AddFailure(outcome, DiagnosticCode::CannotWrite, PrintedPath(options.m_Output) + ": " + error);
    return bytes;
}

void Export(const ListedFile& file, const Form& form, const ExportOptions& options, FileOutcome& outcome) {
    LoadOptions load;
    load.m_Kind = options.m_Kind;
    options.m_Layouts.ApplyTo(load);
    const std::optional<LoadedFile> loaded = LoadListedFile(file, load, outcome);
    if (!loaded || loaded->m_Object == nullptr || outcome.m_Log.HasErrors())
        return;
    const KindObject& object = *loaded->m_Object;
    if (form.m_Kind && object.GetKind() != *form.m_Kind) {
        const Kind kind = object.GetKind();
        AddFailure(outcome, DiagnosticCode::CannotWrite,
                   std::string(form.m_Extension) + " is not for files of the kind " + std::string(WordOf(kind)) +
                       ": write " + ListOfForms(kind));
        return;
    }
    std::string bytes;
    if (!form.m_Kind)
        bytes = JsonOf(ValuesOf(object), JsonLook::Indented);
    else if (*form.m_Kind == Kind::Mesh)
        bytes = GlbOf(static_cast<const MeshObject&>(object).m_Data, file, options, outcome);
    else
        bytes = MakeBrushSheet(static_cast<const BrushesObject&>(object).m_Set, ToUtf16(NameOf(file)));
    if (outcome.m_Status == kExitDone)
        DeliverSingleFile(options.m_Output, bytes, outcome);
}

} // namespace

void DeclareCommand(CommandDeclaration& declaration, ExportOptions& options) {
    declaration.Describe(
        "Writes a file in a form that other tools read: a mesh as GLB, a brush set as SVG, any file as "
        "JSON.",
        "PATH -o OUT.glb|.svg|.json [OPTION]...");
    declaration.Explain("A GLB brings a mesh to any tool that reads glTF 2.0, and 'corvid import' brings it back: the "
                        "same record, bit for bit, but for what was changed on the way. A brush set is drawn to scale. "
                        "JSON is what 'corvid cat --json' prints. A file with errors is refused.");
    declaration.Operands("PATH", options.m_Paths, 1, 1, "a file");
    declaration.Text("-o,--output", "OUT", options.m_Output, "write to OUT; its extension says in which form",
                     ValueRole::File);
    declaration.Require();
    declaration.Text("--textures", "DIR", options.m_TextureFolder,
                     "put the PNG or JPEG files of DIR that have the names of the mesh's textures into the GLB",
                     ValueRole::Folder);
    DeclareKind(declaration, options.m_Kind);
    DeclareLayouts(declaration, options.m_Layouts);
    DeclareDiagnostics(declaration, options.m_Diagnostics);
    DeclareLook(declaration, options.m_Look);
    declaration.Example("corvid export Examples/Mesh/cube.mesh -o cube.glb", "a mesh for a modelling tool");
    declaration.Example("corvid export Examples/Brushes/ConsolePanels.brushes -o panels.svg", "a brush set to look at");
}

int RunCommand(const ExportOptions& options, Console& console) {
    const Form* form = FindForm(options.m_Output);
    if (form == nullptr)
        return console.PrintUsageError("export",
                                       "'" + PrintedPath(options.m_Output) + "' has to end with .glb, .svg or .json");
    if (options.m_TextureFolder && form->m_Kind != Kind::Mesh)
        return console.PrintUsageError("export", "--textures is for .glb");
    return RunOnSingleFile(
        "export", options.m_Paths[0], options.m_Output, options.m_Diagnostics, options.m_Look, console,
        [&](const ListedFile& file, FileOutcome& outcome) { Export(file, *form, options, outcome); });
}

} // namespace Corvid
