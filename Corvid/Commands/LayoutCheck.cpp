#include "Corvid/Commands/LayoutCheck.h"

#include <algorithm>
#include <map>

#include "Corvid/Commands/FileRun.h"
#include "Corvid/Files/FileStatus.h"
#include "Corvid/Files/PrintedPath.h"
#include "Corvid/Layouts/DescribedEntity.h"
#include "Corvid/Layouts/LayoutFindings.h"
#include "Corvid/Layouts/TouchedDoubts.h"
#include "Corvid/Values/ValueTreeWriter.h"
#include "Engine/Layout/LayoutLibrary.h"
#include "Kinds/BuiltInLayouts.h"

namespace Corvid {

namespace {

constexpr std::string_view kCommand = "layout check";

DiagnosticPrinting PrintingFor(const LayoutCheckOptions& options, const Console& console) {
    DiagnosticPrinting printing;
    printing.m_Style = {options.m_Diagnostics.m_Format, console.HasColor(options.m_Look.m_Color, false)};
    printing.m_Limits.m_MostLines = options.m_Diagnostics.m_MostLines;
    if (options.m_Look.m_IsQuiet)
        printing.m_Limits.m_Least = Severity::Error;
    printing.m_IsData = true;
    return printing;
}

// What is said of the layout itself.
int PrintFindings(const std::string& path, DiagnosticLog log, const LayoutCheckOptions& options,
                  const DiagnosticPrinting& printing, Console& console) {
    if (options.m_IsStrict)
        log.PromoteWarnings();
    std::string text;
    for (const ShownDiagnostic& shown : SelectShown(log, printing.m_Limits))
        AppendDiagnostic(text, path, PrintedPath(path), shown, printing.m_Style);
    console.Print(text);
    return log.HasErrors() ? kExitFindings : kExitDone;
}

// A library that has this one layout, whatever its file is called.
class OneLayout final : public LayoutSource {
public:
    explicit OneLayout(std::shared_ptr<const LibraryLayout> layout) : m_Layout(std::move(layout)) {}

    std::shared_ptr<const LibraryLayout> Find(std::string_view typeWord) const override {
        return typeWord == m_Layout->m_Plan->GetLayout().GetName() ? m_Layout : nullptr;
    }

private:
    std::shared_ptr<const LibraryLayout> m_Layout;
};

} // namespace

void DeclareCommand(CommandDeclaration& declaration, LayoutCheckOptions& options) {
    declaration.Describe("Reads a layout, converts samples by it both ways, and tells what they do not prove.",
                         "[OPTION]... FILE SAMPLE...");
    declaration.Explain("A sample that does not come back is an error. What the layout marks as not proven, branches "
                        "that no sample takes, and blocks that are known of the type and missing or doubled are "
                        "warnings. Samples of other types are passed over. See corvid-layout(5).");
    declaration.Operands("PATH", options.m_Paths, 1, 0, "the layout, then samples: files, or folders of them");
    declaration.Flag("--strict", options.m_IsStrict, "take warnings as errors");
    DeclareDiagnostics(declaration, options.m_Diagnostics);
    DeclareLook(declaration, options.m_Look);
    declaration.Example("corvid layout check layouts/Quest.layout Examples/Entity",
                        "checks a layout of quests against all samples of quests below the folder");
}

int RunCommand(const LayoutCheckOptions& options, Console& console) {
    const std::string& path = options.m_Paths[0];
    const std::shared_ptr<const LibraryLayout> layout = LayoutLibrary::Read(EnginePath(path), BuiltInBlocks());
    const DiagnosticPrinting printing = PrintingFor(options, console);
    if (layout->m_Plan == nullptr) {
        DiagnosticLog log;
        const bool isRead = AddLayoutErrors(layout->m_Errors, log);
        const int status = PrintFindings(path, std::move(log), options, printing, console);
        return isRead ? status : kExitCouldNotRun;
    }

    FileSelection selection;
    selection.m_Paths.assign(options.m_Paths.begin() + 1, options.m_Paths.end());
    const FileList list = selection.m_Paths.empty() ? FileList() : FindFiles(selection, {});
    if (const int status = CheckFileList(list, kCommand, console); status != kExitDone)
        return status;

    const OneLayout source(layout);
    LoadOptions load;
    load.m_Layouts = &source;
    load.m_IsUnprovenAllowed = true;
    const Layout& nodes = layout->m_Plan->GetLayout();
    const Layout whole = WithTypeWord(nodes);
    LayoutCoverage coverage(nodes.GetSize());
    std::size_t otherCount = 0;
    const FileRunResult run = RunOverFiles(
        list, 1, options.m_Look, printing, console, // one at a time: `coverage` is shared
        [&](const ListedFile& file) {
            FileOutcome outcome;
            const std::optional<LoadedFile> loaded = LoadListedFile(file, load, outcome);
            if (!loaded)
                return outcome;
            const bool isOther = loaded->m_Kind != Kind::Entity || loaded->m_EntityType != nodes.GetName();
            otherCount += isOther;
            if (isOther) {
                outcome.m_Log = DiagnosticLog();
            } else if (loaded->m_Object != nullptr && !outcome.m_Log.HasErrors()) {
                const bool isBinary = loaded->m_Encoding == ArchiveFormat::Binary;
                coverage.Add(FollowLayout(whole, ValuesOf(*loaded->m_Object), isBinary));
            }
            outcome.m_Log = WithoutMarks(outcome.m_Log); // told once, of the layout
            return outcome;
        },
        [](const ListedFile&, const FileOutcome&) {});
    DiagnosticLog findings;
    FindLayoutFaults(nodes, findings);
    FindOpenPoints(nodes, coverage, findings);
    const int status = PrintFindings(path, std::move(findings), options, printing, console);
    if (!options.m_Look.m_IsQuiet && !console.HasLostReader())
        console.PrintError(InterruptionText(run) + CountOf(run.m_FileCount - otherCount, "sample") + " of " +
                           nodes.GetName() + (otherCount > 0 ? ", " + CountOf(otherCount, "other file") : "") + "\n");
    return std::max(status, run.m_Status);
}

} // namespace Corvid
