#include "Corvid/Commands/Cat.h"

#include <algorithm>
#include <utility>

#include "Corvid/Commands/FileRun.h"
#include "Corvid/Files/FileStatus.h"
#include "Corvid/Files/PrintedPath.h"
#include "Corvid/Json/ValueJson.h"
#include "Corvid/Values/ValueTreeWriter.h"

namespace Corvid {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

// As other programs want text: without a mark, lines that end with LF.
std::string PlainText(std::string text) {
    if (text.starts_with(kByteOrderMark))
        text.erase(0, kByteOrderMark.size());
    auto out = text.begin();
    for (auto in = text.begin(); in != text.end(); ++in) {
        if (*in != '\r' || in + 1 == text.end() || in[1] != '\n')
            *out++ = *in;
    }
    text.erase(out, text.end());
    return text;
}

// Nothing: there is too little memory.
std::optional<std::string> TextOfObject(const KindObject& object, bool isJson) {
    if (isJson)
        return JsonText(JsonOf(ValuesOf(object)), 2) + "\n";
    std::optional<std::string> text = SaveToBytes(object, ArchiveFormat::Text, FloatPrecision::Exact);
    return text ? std::optional(PlainText(std::move(*text))) : std::nullopt;
}

// git shows a version out of a folder that has another name each time: only the file's own name stays the same.
std::string NameOf(const std::string& path) {
    std::size_t begin = path.size();
    while (begin > 0 && !IsPathSeparator(path[begin - 1]))
        --begin;
    return begin < path.size() ? path.substr(begin) : path;
}

std::string DiagnosticLines(const CatOptions& options, const std::string& path, const FileOutcome& outcome,
                            const DiagnosticStyle& style) {
    DiagnosticLimits limits;
    limits.m_MostLines = options.m_Diagnostics.m_MostLines;
    if (options.m_Look.m_IsQuiet)
        limits.m_Least = Severity::Error;
    std::string lines;
    for (const ShownDiagnostic& shown : SelectShown(outcome.m_Log, limits))
        AppendDiagnostic(lines, path, PrintedPath(path), shown, style);
    return lines;
}

// Each line begins with "# ".
std::string AsComments(std::string_view lines) {
    std::string comments;
    while (!lines.empty()) {
        const std::size_t end = std::min(lines.find('\n'), lines.size() - 1) + 1;
        comments.append("# ").append(lines.substr(0, end));
        lines.remove_prefix(end);
    }
    return comments;
}

} // namespace

void DeclareCommand(CommandDeclaration& declaration, CatOptions& options) {
    declaration.Describe("Prints a file in its text form, or as JSON, whatever its encoding.", "[OPTION]... PATH");
    declaration.Operands("PATH", options.m_Paths, 1, 1, "a file; '-' is standard input");
    declaration.Flag("--json", options.m_IsJson,
                     "print one JSON value; the path of a field in a diagnostic is its path in jq");
    declaration.Flag("--lenient", options.m_IsLenient,
                     "for git: what is wrong comes first, as lines that begin with '# ', then what could be read; "
                     "always status 0");
    DeclareKind(declaration, options.m_Kind);
    DeclareLayouts(declaration, options.m_Layouts);
    DeclareDiagnostics(declaration, options.m_Diagnostics);
    DeclareLook(declaration, options.m_Look);
    declaration.Example("corvid cat Examples/Mesh/cube-binary.mesh", "a binary file, readable");
    declaration.Example("corvid cat --json Examples/Mesh/cube.mesh | jq .MeshData.BoundingRadius",
                        "one value of it, with jq");
    declaration.Example("git config diff.corvid.textconv 'corvid cat --lenient'", "lets git show what changed");
}

int RunCommand(const CatOptions& options, Console& console) {
    ListedFile file;
    file.m_Path = options.m_Paths[0];
    LoadOptions load;
    load.m_Kind = options.m_Kind;
    options.m_Layouts.ApplyTo(load);
    load.m_IsForText = !options.m_IsJson;
    FileOutcome outcome;
    const std::optional<LoadedFile> loaded = LoadListedFile(file, load, outcome);
    const bool hasErrors = !loaded || outcome.m_Log.HasErrors();

    const KindObject* object = nullptr;
    if (loaded)
        object = options.m_IsLenient ? loaded->GetBest() : hasErrors ? nullptr : loaded->m_Object.get();
    std::string text;
    if (object != nullptr) {
        std::optional<std::string> whole = TextOfObject(*object, options.m_IsJson);
        if (!whole)
            AddFailure(outcome, DiagnosticCode::CannotRead, "there is not enough memory");
        text = std::move(whole).value_or("");
    }
    const bool areComments = options.m_IsLenient && !options.m_IsJson;
    const DiagnosticStyle style{options.m_Diagnostics.m_Format,
                                !areComments && console.HasColor(options.m_Look.m_Color, true)};
    const std::string lines = DiagnosticLines(options, areComments ? NameOf(file.m_Path) : file.m_Path, outcome, style);
    if (areComments)
        console.Print(AsComments(lines));
    else if (!lines.empty())
        console.PrintError(lines);
    console.Print(text);
    if (options.m_IsLenient)
        return kExitDone;
    return std::max(outcome.m_Status, outcome.m_Log.HasErrors() ? kExitFindings : kExitDone);
}

} // namespace Corvid
