#include "Corvid/Commands/Info.h"

#include <algorithm>

#include "Corvid/Commands/FileRun.h"
#include "Corvid/Files/PrintedPath.h"
#include "Corvid/Info/InfoText.h"

namespace Corvid {

namespace {

// The kind that the outcome tells of the file, from 1; 0: it could not be read.
int TallyOf(const FileInfo& info) {
    return info.m_Kind ? 2 + static_cast<int>(*info.m_Kind) : 1;
}

FileInfo InfoOfTally(int tally, std::uint64_t bytes) {
    FileInfo info;
    info.m_Bytes = bytes;
    if (tally > 1)
        info.m_Kind = static_cast<Kind>(tally - 2);
    return info;
}

FileOutcome DescribeListedFile(const ListedFile& file, const InfoOptions& options) {
    FileOutcome outcome;
    LoadOptions load;
    load.m_Kind = options.m_Kind;
    options.m_Layouts.ApplyTo(load);
    const std::optional<LoadedFile> loaded = LoadListedFile(file, load, outcome);
    if (!loaded)
        return outcome;
    const FileInfo info = DescribeFile(*loaded);
    outcome.m_Tally = TallyOf(info);
    if (options.m_IsJson)
        AppendInfoJson(outcome.m_Data, file.m_Path, info);
    else
        AppendInfoText(outcome.m_Data, PrintedPath(file.m_Path), info);
    return outcome;
}

} // namespace

void DeclareCommand(CommandDeclaration& declaration, InfoOptions& options) {
    declaration.Describe("Tells of each file its kind, encoding and size, what it holds, and which files it names.",
                         "[OPTION]... PATH...");
    declaration.Explain("Several files end with a table of totals. What is wrong with a file goes to standard error, "
                        "and what could be read of it is told all the same.");
    DeclareFiles(declaration, options.m_Batch.m_Files);
    declaration.Flag("--json", options.m_IsJson, "print an object a file, for scripts");
    DeclareKind(declaration, options.m_Kind);
    DeclareLayouts(declaration, options.m_Layouts);
    DeclareJobs(declaration, options.m_Batch.m_Jobs);
    DeclareDiagnostics(declaration, options.m_Diagnostics);
    DeclareLook(declaration, options.m_Look);
    declaration.Example("corvid info Examples/Mesh/cube.mesh", "counts, bounds, textures of a mesh");
    declaration.Example("corvid info --json --layouts Examples/Layouts Examples",
                        "an object for each file below the folder, then the totals");
}

int RunCommand(const InfoOptions& options, Console& console) {
    const auto& paths = options.m_Batch.m_Files.m_Paths;
    if (std::ranges::find(paths, kStandardInputPath) != paths.end())
        return console.PrintUsageError("info", "standard input ('-') cannot be asked about; write it to a file first");
    const FileList list = FindFiles(options.m_Batch.m_Files, {}, options.m_Batch.m_Jobs);
    if (const int status = CheckFileList(list, "info", console); status != kExitDone)
        return status;
    DiagnosticPrinting printing;
    printing.m_Style = {options.m_Diagnostics.m_Format, console.HasColor(options.m_Look.m_Color, true)};
    printing.m_Limits.m_MostLines = options.m_Diagnostics.m_MostLines;
    if (options.m_Look.m_IsQuiet)
        printing.m_Limits.m_Least = Severity::Error;

    InfoTotals totals;
    const FileRunResult result = RunOverFiles(
        list, options.m_Batch.m_Jobs, options.m_Look, printing, console,
        [&](const ListedFile& file) { return DescribeListedFile(file, options); },
        [&](const ListedFile&, const FileOutcome& outcome) {
            if (outcome.m_Tally > 0)
                totals.Add(InfoOfTally(outcome.m_Tally, outcome.m_Bytes));
        });
    if (list.m_HasFolders || result.m_FileCount > 1) {
        std::string text;
        if (options.m_IsJson)
            AppendTotalsJson(text, totals);
        else
            AppendTotalsText(text, totals);
        console.Print(text);
    }
    if (IsInterrupted())
        console.PrintError(InterruptionText(result) + CountOf(result.m_FileCount, "file") + " told of\n");
    return result.m_Status;
}

} // namespace Corvid
