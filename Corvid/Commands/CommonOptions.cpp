#include "Corvid/Commands/CommonOptions.h"

namespace Corvid {

namespace {

std::vector<std::pair<std::string, Look>> Looks() {
    return {{"auto", Look::Auto}, {"always", Look::Always}, {"never", Look::Never}};
}

} // namespace

void DeclareFiles(CommandDeclaration& declaration, FileSelection& files) {
    declaration.Operands("PATH", files.m_Paths, 0, 0,
                         "a file, whatever its name; or a folder, which is searched for .mesh, .particle, .brushes and "
                         ".entity files; '-' is standard input");
    declaration.Text("--files-from", "FILE", files.m_ListPath,
                     "also take the paths in FILE, one per line ('-': standard input)", ValueRole::File);
    declaration.Flag("-0,--null", files.m_IsListByNul, "the paths of --files-from end with a NUL each");
    declaration.Take(
        "--shard", "K/N",
        [&files](const std::string& text) -> std::string {
            const std::optional<Shard> shard = ShardFromText(text);
            if (!shard)
                return "'" + text + "' is not K/N with 1 <= K <= N";
            files.m_Shard = *shard;
            return {};
        },
        "take the K-th of N parts of the files; a file's part depends on its path alone");
}

void DeclareJobs(CommandDeclaration& declaration, int& jobs) {
    declaration.Number("-j,--jobs", "N", jobs, 1, "work on N files at once (default: the processors at hand)");
}

void DeclareKind(CommandDeclaration& declaration, std::optional<Kind>& kind) {
    std::vector<std::pair<std::string, Kind>> kinds;
    for (const Kind each : kKinds)
        kinds.emplace_back(WordOf(each), each);
    declaration.OneOf("--type", kind, std::move(kinds), "what the files are, whatever their names and contents say");
}

void DeclareDiagnostics(CommandDeclaration& declaration, DiagnosticOptions& options) {
    declaration.OneOf("--format", options.m_Format,
                      std::vector<std::pair<std::string, DiagnosticFormat>>{{"text", DiagnosticFormat::Text},
                                                                            {"json", DiagnosticFormat::Json},
                                                                            {"github", DiagnosticFormat::Github}},
                      "how diagnostics are written: for people, as a JSON object a line, or as workflow commands");
    DeclareMostLines(declaration, options.m_MostLines);
}

void DeclareMostLines(CommandDeclaration& declaration, std::uint64_t& mostLines) {
    declaration.Number("--max-errors", "N", mostLines, 0,
                       "at most N lines of diagnostics for a file (default: 100; 0: all of everything)");
}

void DeclareColor(CommandDeclaration& declaration, Look& color) {
    declaration.OneOf("--color", color, Looks(), "when to use colours (auto: on a terminal)");
}

void DeclareLook(CommandDeclaration& declaration, LookOptions& options) {
    declaration.Flag("-q,--quiet", options.m_IsQuiet, "print errors and data only");
    DeclareColor(declaration, options.m_Color);
    DeclareProgress(declaration, options.m_Progress);
}

void DeclareProgress(CommandDeclaration& declaration, Look& progress) {
    declaration.OneOf("--progress", progress, Looks(), "when to show progress on standard error");
}

} // namespace Corvid
