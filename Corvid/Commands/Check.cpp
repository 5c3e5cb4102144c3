#include "Corvid/Commands/Check.h"

#include <algorithm>

#include "Corvid/Commands/FileRun.h"
#include "Corvid/Content/ContentChecks.h"
#include "Corvid/Content/Loss.h"
#include "Corvid/Content/ReferenceIndex.h"
#include "Corvid/Files/FileStatus.h"
#include "Corvid/Files/PrintedPath.h"

namespace Corvid {

namespace {

// `index` is null where nobody wants to know.
FileOutcome CheckFile(const ListedFile& file, const CheckOptions& options, const ReferenceIndex* index) {
    FileOutcome outcome;
    LoadOptions load;
    load.m_Kind = options.m_Kind;
    load.m_IsForText = options.m_IsLossWanted;
    options.m_Layouts.ApplyTo(load);
    std::string bytes;
    const std::optional<LoadedFile> loaded =
        LoadListedFile(file, load, outcome, options.m_IsLossWanted ? &bytes : nullptr);
    if (loaded && loaded->m_Object != nullptr && !outcome.m_Log.HasErrors()) {
        CheckContent(*loaded->m_Object, outcome.m_Log);
        if (index != nullptr)
            CheckReferences(*loaded->m_Object, *index, outcome.m_Log);
        if (options.m_IsLossWanted)
            NoteLoss(bytes, EnginePath(file.m_Path), *loaded, load, outcome.m_Log);
    }
    if (options.m_IsStrict)
        outcome.m_Log.PromoteWarnings();
    if (options.m_IsList) {
        const bool isBad = outcome.m_Status != kExitDone || outcome.m_Log.HasErrors();
        outcome.m_Data = (isBad ? "BAD " : "OK  ") + PrintedPath(file.m_Path) + "\n";
    }
    return outcome;
}

} // namespace

void DeclareCommand(CommandDeclaration& declaration, CheckOptions& options) {
    declaration.Describe("Loads files, reports what is wrong with them and where, and writes nothing.",
                         "[OPTION]... PATH...");
    declaration.Explain("Diagnostics are data and go to standard output. The exit status is 1 where there are errors, "
                        "2 where something cannot be read.");
    DeclareFiles(declaration, options.m_Batch.m_Files);
    declaration.Flag("--strict", options.m_IsStrict, "take warnings as errors");
    declaration.Flag("--list", options.m_IsList,
                     "print one line per file, 'OK  PATH' or 'BAD PATH', and no diagnostics");
    declaration.Flag("--loss", options.m_IsLossWanted,
                     "note what the other encoding, or loading itself, does not bring back");
    declaration.Text("--references", "DIR", options.m_ReferencesFolder,
                     "look for the files that fields name among those below DIR, by file name in any case",
                     ValueRole::Folder);
    DeclareKind(declaration, options.m_Kind);
    DeclareLayouts(declaration, options.m_Layouts);
    DeclareDiagnostics(declaration, options.m_Diagnostics);
    DeclareJobs(declaration, options.m_Batch.m_Jobs);
    DeclareLook(declaration, options.m_Look);
    declaration.Example("corvid check Examples/Particle", "checks all files below the folder");
    declaration.Example("corvid check --strict --format json Examples/Mesh/cube.mesh",
                        "for scripts: an object a line, warnings count as errors");
    declaration.Example("find Examples -name '*.mesh' | corvid check --list --files-from -",
                        "says of each file that find finds whether it is sound");
}

int RunCommand(const CheckOptions& options, Console& console) {
    const FileList list = FindFiles(options.m_Batch.m_Files, {}, options.m_Batch.m_Jobs);
    if (const int status = CheckFileList(list, "check", console); status != kExitDone)
        return status;
    ReferenceIndex index;
    if (options.m_ReferencesFolder && !index.Read(*options.m_ReferencesFolder)) {
        console.PrintError(index.GetError());
        return kExitCouldNotRun;
    }
    DiagnosticPrinting printing;
    printing.m_Style = {options.m_Diagnostics.m_Format, console.HasColor(options.m_Look.m_Color, false)};
    printing.m_Limits.m_MostLines = options.m_Diagnostics.m_MostLines;
    if (options.m_Look.m_IsQuiet)
        printing.m_Limits.m_Least = Severity::Error;
    printing.m_IsData = true;
    printing.m_IsSilent = options.m_IsList;

    std::uint64_t withErrors = 0;
    std::uint64_t withWarnings = 0;
    const FileRunResult result = RunOverFiles(
        list, options.m_Batch.m_Jobs, options.m_Look, printing, console,
        [&](const ListedFile& file) { return CheckFile(file, options, options.m_ReferencesFolder ? &index : nullptr); },
        [&](const ListedFile&, const FileOutcome& outcome) {
            withErrors += outcome.m_Log.Has(Severity::Error);
            withWarnings += outcome.m_Log.Has(Severity::Warning);
        });
    if (options.m_Diagnostics.m_Format == DiagnosticFormat::Json && !options.m_IsList)
        console.Print(SummaryJson(result.m_FileCount, withErrors, withWarnings));
    if (!options.m_Look.m_IsQuiet && !console.HasLostReader())
        console.PrintError(InterruptionText(result) + CountOf(result.m_FileCount, "file") + ", " +
                           std::to_string(withErrors) + " with errors, " + std::to_string(withWarnings) +
                           " with warnings\n");
    return result.m_Status;
}

} // namespace Corvid
