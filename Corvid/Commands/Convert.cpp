#include "Corvid/Commands/Convert.h"

#include <array>
#include <span>

#include "Corvid/Commands/FileRun.h"
#include "Corvid/Files/Destinations.h"
#include "Corvid/Files/FileStatus.h"
#include "Corvid/Files/FileTurns.h"
#include "Corvid/Files/PrintedPath.h"
#include "Corvid/Files/ResultFile.h"
#include "Corvid/Values/ValueDifferences.h"
#include "Corvid/Values/ValueTreeWriter.h"

namespace Corvid {

namespace {

enum class Tally { Failed, Converted, Unchanged, Refused }; // what memory does not suffice for has the first
constexpr std::size_t kTallyCount = 4;

struct Conversion {
    const ConvertOptions& m_Options;
    const DestinationPlan& m_Plan;
    const std::string m_Destination;
    const ListedFile& m_File;

    FileOutcome Run() const;

private:
    Tally Convert(FileOutcome& outcome) const;
    Tally DeliverWhole(const LoadedFile& loaded, FileOutcome& outcome) const;
    ResultFile OpenResult() const;
    Tally Finish(ResultFile& result, FileOutcome& outcome) const;
    std::string PlanLine() const;
    static Tally FailForMemory(FileOutcome& outcome);
    std::string FindVerifyError(const LoadedFile& loaded, const std::string& bytes) const;
    bool IsDestinationNewer() const;
    bool IsNoFile() const;
};

FileOutcome Conversion::Run() const {
    FileOutcome outcome;
    outcome.m_Tally = static_cast<int>(Convert(outcome));
    return outcome;
}

Tally Conversion::Convert(FileOutcome& outcome) const {
    if (m_Options.m_IsUpdate && IsDestinationNewer())
        return Tally::Unchanged;
    if (m_Options.m_IsInPlace && IsNoFile()) {
        AddFailure(outcome, DiagnosticCode::CannotWrite, "a pipe or device cannot be converted in place; use -o");
        return Tally::Failed;
    }
    LoadOptions load;
    load.m_Kind = m_Options.m_Kind;
    m_Options.m_Layouts.ApplyTo(load);
    load.m_IsForText = m_Options.m_Format == ArchiveFormat::Text;
    const std::optional<LoadedFile> loaded = LoadListedFile(m_File, load, outcome);
    if (!loaded)
        return Tally::Failed;
    if (loaded->m_Object == nullptr || (outcome.m_Log.HasErrors() && !m_Options.m_IsLossAllowed)) {
        outcome.m_Status = kExitFindings;
        return Tally::Refused;
    }
    outcome.m_Log.DemoteErrors();
    if (m_Plan.m_IsStandardOutput || m_Options.m_IsVerified)
        return DeliverWhole(*loaded, outcome);
    ResultFile result = OpenResult();
    if (!SaveToSink(*loaded->m_Object, m_Options.m_Format, m_Options.m_Floats, result))
        return FailForMemory(outcome);
    return Finish(result, outcome);
}

// By way of memory: what has to be looked at first, and what may wait for its turn on standard output.
Tally Conversion::DeliverWhole(const LoadedFile& loaded, FileOutcome& outcome) const {
    std::optional<std::string> bytes = SaveToBytes(*loaded.m_Object, m_Options.m_Format, m_Options.m_Floats);
    if (!bytes)
        return FailForMemory(outcome);
    if (m_Options.m_IsVerified) {
        if (std::string error = FindVerifyError(loaded, *bytes); !error.empty()) {
            outcome.m_Log.Add(DiagnosticCode::Refused, {}, {}, std::move(error));
            return Tally::Refused;
        }
    }
    if (m_Plan.m_IsStandardOutput) {
        outcome.m_Data = m_Options.m_IsDryRun ? PlanLine() : std::move(*bytes);
        return Tally::Converted;
    }
    ResultFile result = OpenResult();
    result.WriteBlock(bytes->data(), bytes->size());
    return Finish(result, outcome);
}

ResultFile Conversion::OpenResult() const {
    const bool isWritten = !m_Options.m_IsCheck && !m_Options.m_IsDryRun;
    return ResultFile(m_Destination, isWritten ? ResultFile::Use::Write : ResultFile::Use::Compare, m_Plan.m_IsFolder,
                      m_Plan.m_IsNew);
}

Tally Conversion::Finish(ResultFile& result, FileOutcome& outcome) const {
    const ResultFile::Fate fate = result.Finish();
    if (fate == ResultFile::Fate::Unchanged)
        return Tally::Unchanged;
    if (fate == ResultFile::Fate::Failed) {
        AddFailure(outcome, DiagnosticCode::CannotWrite,
                   m_Destination == m_File.m_Path ? result.GetError()
                                                  : PrintedPath(m_Destination) + ": " + result.GetError());
        return Tally::Failed;
    }
    if (m_Options.m_IsCheck) {
        outcome.m_Data = PrintedPath(m_Destination) + "\n";
        outcome.m_Status = kExitFindings;
    } else if (m_Options.m_IsDryRun) {
        outcome.m_Data = PlanLine();
    }
    return Tally::Converted;
}

// What would be done.
std::string Conversion::PlanLine() const {
    const std::string line = "convert " + PrintedPath(m_File.m_Path);
    return line + (m_Destination == m_File.m_Path ? "\n" : " -> " + PrintedPath(m_Destination) + "\n");
}

Tally Conversion::FailForMemory(FileOutcome& outcome) {
    AddFailure(outcome, DiagnosticCode::CannotWrite, "there is not enough memory");
    return Tally::Failed;
}

// Why the result may not take the destination's place; empty: it holds the same values.
std::string Conversion::FindVerifyError(const LoadedFile& loaded, const std::string& bytes) const {
    LoadOptions load;
    load.m_Kind = loaded.m_Kind;
    m_Options.m_Layouts.ApplyTo(load);
    load.m_IsUnprovenAllowed = true; // what the source touches, so does the result
    const LoadedFile again = LoadFromBytes(bytes, EnginePath(m_File.m_Path), load);
    if (again.m_IsMemoryShort)
        return "there is not enough memory to verify the result";
    if (again.m_Object == nullptr || again.m_Log.HasErrors())
        return "the result does not load again";
    const bool isText = m_Options.m_Format == ArchiveFormat::Text || loaded.m_Encoding == ArchiveFormat::Text;
    const std::vector<FieldDifference> differences =
        CompareValues(ValuesOf(*loaded.m_Object), ValuesOf(*again.m_Object),
                      isText ? ColorPrecision::EightBits : ColorPrecision::Floats);
    if (differences.empty())
        return {};
    return differences.front().m_Path + " would not come back the same" +
           (m_Options.m_Floats == FloatPrecision::SixDecimals ? "; --floats exact keeps every float" : "");
}

bool Conversion::IsDestinationNewer() const {
    if (m_Plan.m_IsStandardOutput || m_File.IsStandardInput() || !m_File.m_Error.empty())
        return false;
    const std::optional<FileStatus> status = GetFileStatus(m_Destination);
    return status && status->m_Type == FileType::File && status->m_Modified > m_File.m_Modified;
}

// A pipe would be waited for until somebody reads what was just read from it. What is no file has no size.
bool Conversion::IsNoFile() const {
    if (m_File.m_Size > 0)
        return false;
    const std::optional<FileStatus> status = GetFileStatus(m_File.m_Path);
    return status && status->m_Type == FileType::Other;
}

// What is wrong with the options together; empty: nothing.
std::string FindConflict(const ConvertOptions& options) {
    if (options.m_Output && options.m_IsInPlace)
        return "-o and -i exclude each other";
    if (options.m_IsCheck && options.m_Output == kStandardInputPath)
        return "--check compares with what a destination holds, and standard output holds nothing";
    if (!options.m_Output && !options.m_IsInPlace && !options.m_IsCheck)
        return "where the results go is missing: -o OUT, -i (in place) or --check";
    return {};
}

std::string ClosingLine(const std::array<std::uint64_t, kTallyCount>& tally) {
    const auto count = [&](Tally what) { return std::to_string(tally[static_cast<std::size_t>(what)]); };
    return count(Tally::Converted) + " converted, " + count(Tally::Unchanged) + " unchanged, " + count(Tally::Refused) +
           " refused, " + count(Tally::Failed) + " failed\n";
}

} // namespace

void DeclareCommand(CommandDeclaration& declaration, ConvertOptions& options) {
    declaration.Describe("Converts files between the text and the binary encoding.",
                         "--to txt|bin (-o OUT | -i | --check) [OPTION]... PATH...");
    declaration.Explain("A file with errors is refused: nothing is written for it. A result that equals what the "
                        "destination holds is not written. Until a result is whole, its destination stays as it was.");
    declaration.OneOf("--to", options.m_Format,
                      std::vector<std::pair<std::string, ArchiveFormat>>{{"txt", ArchiveFormat::Text},
                                                                         {"bin", ArchiveFormat::Binary}},
                      "the encoding to write");
    declaration.Require();
    declaration.Text("-o,--output", "OUT", options.m_Output,
                     "write to the file OUT ('-': standard output); with several files, a folder given or a slash at "
                     "its end, OUT is a folder, which gets the tree below each folder given",
                     ValueRole::File);
    declaration.Flag("-i,--in-place", options.m_IsInPlace, "write each result over its source");
    declaration.Flag("--check", options.m_IsCheck,
                     "write nothing, print the paths that would change; status 1 if there are any");
    declaration.Flag("-n,--dry-run", options.m_IsDryRun, "write nothing, print what would be done");
    declaration.Flag("--update", options.m_IsUpdate, "leave out files whose destination is newer");
    declaration.Flag("--verify", options.m_IsVerified,
                     "load each result again and compare every value before it takes the destination's place");
    declaration.Flag("--allow-loss", options.m_IsLossAllowed,
                     "write files with errors as far as they could be read, with the errors as warnings");
    declaration.OneOf("--floats", options.m_Floats,
                      std::vector<std::pair<std::string, FloatPrecision>>{{"exact", FloatPrecision::Exact},
                                                                          {"six", FloatPrecision::SixDecimals}},
                      "decimals in text: as many as bring back every float (default), or always six, as recast");
    DeclareKind(declaration, options.m_Kind);
    DeclareLayouts(declaration, options.m_Layouts);
    DeclareFiles(declaration, options.m_Batch.m_Files);
    DeclareJobs(declaration, options.m_Batch.m_Jobs);
    DeclareDiagnostics(declaration, options.m_Diagnostics);
    DeclareLook(declaration, options.m_Look);
    declaration.Example("corvid convert --to txt -o cube.txt Examples/Mesh/cube-binary.mesh", "one file");
    declaration.Example("corvid convert --to bin -o binary Examples/Particle",
                        "a whole folder; the tree below it appears in the folder binary");
    declaration.Example("corvid convert --to txt --check Examples/Mesh",
                        "for CI: which files are not in the text form yet?");
    declaration.Example("corvid convert --to bin -o - Examples/Brushes/Portraits.brushes | corvid check -",
                        "through a pipe");
}

int RunCommand(const ConvertOptions& options, Console& console) {
    if (const std::string conflict = FindConflict(options); !conflict.empty())
        return console.PrintUsageError("convert", conflict);
    const FileList list = FindFiles(options.m_Batch.m_Files, options.m_Output.value_or(""), options.m_Batch.m_Jobs);
    if (const int status = CheckFileList(list, "convert", console); status != kExitDone)
        return status;
    const DestinationPlan plan = options.m_Output ? PlanOutput(list, *options.m_Output) : PlanInPlace(list);
    if (!plan.m_UsageError.empty())
        return console.PrintUsageError("convert", plan.m_UsageError);

    DiagnosticPrinting printing;
    printing.m_Style = {options.m_Diagnostics.m_Format, console.HasColor(options.m_Look.m_Color, true)};
    printing.m_Limits.m_MostLines = options.m_Diagnostics.m_MostLines;
    if (options.m_Look.m_IsQuiet)
        printing.m_Limits.m_Least = Severity::Error;
    FileTurns turns(options.m_IsInPlace ? std::span(list.m_Files) : std::span<const ListedFile>());
    std::array<std::uint64_t, kTallyCount> tally{};
    const FileRunResult result = RunOverFiles(
        list, options.m_Batch.m_Jobs, options.m_Look, printing, console,
        [&](const ListedFile& file) {
            const std::unique_lock<std::mutex> turn = turns.Await(file);
            return Conversion{options, plan, plan.PathFor(file), file}.Run();
        },
        [&](const ListedFile&, const FileOutcome& outcome) { ++tally[static_cast<std::size_t>(outcome.m_Tally)]; });
    if (!options.m_Look.m_IsQuiet && options.m_Diagnostics.m_Format == DiagnosticFormat::Text)
        console.PrintError(InterruptionText(result) + ClosingLine(tally));
    return result.m_Status;
}

} // namespace Corvid
