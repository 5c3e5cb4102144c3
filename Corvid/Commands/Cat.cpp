#include "Corvid/Commands/Cat.h"

#include <algorithm>
#include <new>

#include "Corvid/Commands/FileRun.h"
#include "Corvid/Files/PrintedPath.h"
#include "Corvid/Json/ValueJson.h"
#include "Corvid/Values/ValueTreeWriter.h"

namespace Corvid {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

// Prints what comes.
struct PrintingSink : ByteSink {
    explicit PrintingSink(Console& console) : m_Console(console) {}
    void WriteBlock(const char* bytes, std::size_t count) override { m_Console.Print({bytes, count}); }

    Console& m_Console;
};

// As other programs want text: without a mark, lines that end with LF.
struct PlainTextSink final : PrintingSink {
    using PrintingSink::PrintingSink;

    void WriteBlock(const char* bytes, std::size_t count) override {
        std::string plain;
        plain.reserve(count + 1);
        for (const char byte : std::string_view(bytes, count)) {
            if (m_MarkBytes < kByteOrderMark.size() && byte == kByteOrderMark[m_MarkBytes]) {
                ++m_MarkBytes;
                continue;
            }
            m_MarkBytes = kByteOrderMark.size(); // it stands at the beginning only
            if (m_HasReturn && byte != '\n')
                plain.push_back('\r');
            m_HasReturn = byte == '\r';
            if (!m_HasReturn)
                plain.push_back(byte);
        }
        m_Console.Print(plain);
    }

private:
    std::size_t m_MarkBytes = 0;
    bool m_HasReturn = false; // it waits for what follows
};

// False: there is too little memory.
bool PrintObject(const KindObject& object, bool isJson, Console& console) {
    if (!isJson) {
        PlainTextSink sink(console);
        return SaveToSink(object, ArchiveFormat::Text, FloatPrecision::Exact, sink);
    }
    try {
        PrintingSink sink(console);
        WriteJson(ValuesOf(object), JsonLook::Indented, sink);
        return true;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

// git shows a version out of a folder that has another name each time: only the file's own name stays the same.
std::string NameOf(const std::string& path) {
    const std::string_view name = LastName(path);
    return name.empty() ? path : std::string(name);
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
    const bool areComments = options.m_IsLenient && !options.m_IsJson;
    const DiagnosticStyle style{options.m_Diagnostics.m_Format,
                                !areComments && console.HasColor(options.m_Look.m_Color, true)};
    const std::string lines = DiagnosticLines(options, areComments ? NameOf(file.m_Path) : file.m_Path, outcome, style);
    if (areComments)
        console.Print(AsComments(lines));
    else if (!lines.empty())
        console.PrintError(lines);
    if (object != nullptr && !PrintObject(*object, options.m_IsJson, console)) {
        FileOutcome shortage;
        AddFailure(shortage, DiagnosticCode::CannotRead, "there is not enough memory");
        console.PrintError(DiagnosticLines(options, file.m_Path, shortage, style));
        outcome.m_Status = shortage.m_Status;
    }
    if (options.m_IsLenient)
        return kExitDone;
    return std::max(outcome.m_Status, outcome.m_Log.HasErrors() ? kExitFindings : kExitDone);
}

} // namespace Corvid
