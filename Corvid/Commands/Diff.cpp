#include "Corvid/Commands/Diff.h"

#include <charconv>
#include <cmath>

#include "Corvid/Commands/DiffFolders.h"
#include "Corvid/Commands/DiffForGit.h"
#include "Corvid/Commands/DiffPair.h"
#include "Corvid/Files/FailureLine.h"
#include "Corvid/Files/FileStatus.h"
#include "Corvid/Files/PrintedPath.h"
#include "Corvid/Files/SystemError.h"

namespace Corvid {

namespace {

std::string TakeTolerance(const std::string& text, double& value) {
    const char* const end = text.data() + text.size();
    const auto [position, error] = std::from_chars(text.data(), end, value);
    if (error == std::errc() && position == end && std::isfinite(value) && value >= 0)
        return {};
    return "'" + text + "' is no number of at least 0";
}

bool IsFolder(const std::string& path) {
    if (path == kStandardInputPath)
        return false;
    const std::optional<FileStatus> status = GetFileStatus(path);
    return status && status->m_Type == FileType::Folder;
}

DiffSide SideOf(const std::string& path) {
    DiffSide side;
    side.m_File.m_Path = path;
    side.m_ShownPath = path;
    if (!side.m_File.IsStandardInput())
        side.m_File.m_Size = GetFileStatus(path).value_or(FileStatus()).m_Size;
    return side;
}

} // namespace

void DeclareCommand(CommandDeclaration& declaration, DiffOptions& options) {
    declaration.Describe("Tells what differs between two files of one kind, whatever their encodings, or between the "
                         "files of two folders.",
                         "[OPTION]... A B");
    declaration.Explain("Elements are paired by content and name, so that one that was inserted, removed or moved is "
                        "one line; vertices and triangles are summarised. The exit status is 0 where all is the "
                        "same, 1 where something differs or a file has errors, 2 where two things cannot be "
                        "compared.");
    declaration.Explain("As GIT_EXTERNAL_DIFF='corvid diff' it takes the arguments that git gives, and ends with "
                        "status 0.");
    declaration.Operands("A B", options.m_Paths, 1, 9, "two files ('-' is standard input), or two folders");
    declaration.Flag("--full", options.m_Compare.m_IsFull, "tell every vertex, triangle and index that differs");
    declaration.Flag("--all", options.m_Compare.m_IsWithDerived, "compare derived lists, too");
    declaration.Number("--ulp", "N", options.m_Compare.m_Ulp, 0,
                       "take floats as the same that are at most N floats apart");
    declaration.Take(
        "--tolerance", "X",
        [&options](const std::string& text) { return TakeTolerance(text, options.m_Compare.m_Tolerance); },
        "take floats as the same that differ by at most X");
    declaration.OneOf(
        "--format", options.m_Format,
        std::vector<std::pair<std::string, DiffFormat>>{{"text", DiffFormat::Text}, {"json", DiffFormat::Json}},
        "how differences are written: for people, or as a JSON object a line");
    DeclareKind(declaration, options.m_Kind);
    DeclareLayouts(declaration, options.m_Layouts);
    DeclareJobs(declaration, options.m_Jobs);
    DeclareMostLines(declaration, options.m_MostLines);
    declaration.Flag("-q,--quiet", options.m_Look.m_IsQuiet, "tell by the exit status alone whether anything differs");
    DeclareColor(declaration, options.m_Look.m_Color);
    DeclareProgress(declaration, options.m_Look.m_Progress);
    declaration.Example("corvid diff Examples/Mesh/cube.mesh Examples/Mesh/cube-binary.mesh",
                        "what differs between a text and a binary file");
    declaration.Example("corvid diff --tolerance 0.00001 -q Examples/Mesh Examples/Mesh",
                        "says by its status alone whether two folders hold the same");
    declaration.Example("GIT_EXTERNAL_DIFF='corvid diff' git diff", "what changed in a repository");
}

int RunCommand(const DiffOptions& options, Console& console) {
    if (IsCalledByGit(options.m_Paths))
        return DiffForGit(options, console);
    if (options.m_Paths.size() != 2)
        return console.PrintUsageError("diff", "two paths are needed");
    const std::string& before = options.m_Paths[0];
    const std::string& after = options.m_Paths[1];
    if (before.empty() || after.empty())
        return console.PrintUsageError("diff", "a path is empty");
    if (before == kStandardInputPath && after == kStandardInputPath)
        return console.PrintUsageError("diff", "standard input ('-') can be read only once");
    const bool areFolders = IsFolder(before);
    if (areFolders != IsFolder(after)) {
        const std::string& folder = areFolders ? before : after;
        const std::string& other = areFolders ? after : before;
        if (other != kStandardInputPath && !GetFileStatus(other)) {
            console.PrintError(FailureLine(other, DiagnosticCode::CannotRead, LastSystemError()));
            return kExitCouldNotRun;
        }
        return console.PrintUsageError("diff",
                                       PrintedPath(folder) + " is a folder, and " + PrintedPath(other) + " is none");
    }
    if (areFolders)
        return DiffTwoFolders(before, after, options, console);

    DiffStyle style;
    style.m_File = after;
    style.m_HasColor = console.HasColor(options.m_Look.m_Color, false);
    style.m_HasErrorColor = console.HasColor(options.m_Look.m_Color, true);
    const DiffOutcome outcome = DiffTwoFiles(SideOf(before), SideOf(after), options, style);
    if (!outcome.m_Errors.empty())
        console.PrintError(outcome.m_Errors);
    console.Print(outcome.m_Data);
    return outcome.m_Status;
}

} // namespace Corvid
