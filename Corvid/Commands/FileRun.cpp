#include "Corvid/Commands/FileRun.h"

#include <algorithm>
#include <new>

#include "Corvid/Files/FileStatus.h"
#include "Corvid/Files/PrintedPath.h"
#include "Corvid/Load/StreamedLoad.h"
#include "Corvid/Terminal/Progress.h"

namespace Corvid {

namespace {

void PrintDiagnostics(const ListedFile& file, const FileOutcome& outcome, const DiagnosticPrinting& printing,
                      Console& console) {
    if (printing.m_IsSilent || outcome.m_Log.IsEmpty())
        return;
    std::string text;
    const std::string printedPath = PrintedPath(file.m_Path);
    for (const ShownDiagnostic& shown : SelectShown(outcome.m_Log, printing.m_Limits))
        AppendDiagnostic(text, file.m_Path, printedPath, shown, printing.m_Style);
    if (printing.m_IsData)
        console.Print(text);
    else if (!text.empty())
        console.PrintError(text);
}

FileOutcome WorkWithinMemory(const ListedFile& file, const std::function<FileOutcome(const ListedFile&)>& work) {
    try {
        return work(file);
    } catch (const std::bad_alloc&) {
        FileOutcome outcome;
        AddFailure(outcome, DiagnosticCode::CannotRead, "there is not enough memory");
        return outcome;
    }
}

} // namespace

void AddFailure(FileOutcome& outcome, DiagnosticCode code, std::string message) {
    outcome.m_Log.Add(code, {}, {}, std::move(message));
    outcome.m_Status = kExitCouldNotRun;
}

std::optional<std::string> ReadListedFile(const ListedFile& file, FileOutcome& outcome) {
    if (!file.m_Error.empty()) {
        AddFailure(outcome, DiagnosticCode::CannotRead, file.m_Error);
        return std::nullopt;
    }
    ReadResult read = file.IsStandardInput() ? ReadStandardInput()
                      : file.m_IsFile        ? ReadFoundFile(file.m_Path)
                                             : ReadFileBytes(file.m_Path);
    if (!read.m_Error.empty()) {
        AddFailure(outcome, DiagnosticCode::CannotRead, read.m_Error);
        return std::nullopt;
    }
    outcome.m_Bytes = read.m_Bytes.size();
    return std::move(read.m_Bytes);
}

std::optional<LoadedFile> LoadListedFile(const ListedFile& file, const LoadOptions& options, FileOutcome& outcome,
                                         std::string* bytes) {
    if (bytes == nullptr && file.m_Error.empty() && file.m_Size >= kLeastStreamedSize) {
        if (std::optional<LoadedFile> streamed = LoadStreamed(EnginePath(file.m_Path), options)) {
            outcome.m_Bytes = streamed->m_Size;
            return streamed;
        }
    }
    std::optional<std::string> read = ReadListedFile(file, outcome);
    if (!read)
        return std::nullopt;
    if (bytes != nullptr)
        *bytes = *read;
    LoadedFile loaded =
        LoadFromBytes(std::move(*read), file.IsStandardInput() ? u"" : EnginePath(file.m_Path), options);
    if (loaded.m_IsMemoryShort) {
        AddFailure(outcome, DiagnosticCode::CannotRead, "there is not enough memory");
        return std::nullopt;
    }
    outcome.m_Log = std::move(loaded.m_Log);
    return loaded;
}

FileRunResult RunOverFiles(const FileList& list, int jobs, const LookOptions& look, const DiagnosticPrinting& printing,
                           Console& console, const std::function<FileOutcome(const ListedFile&)>& work,
                           const std::function<void(const ListedFile&, const FileOutcome&)>& take) {
    std::vector<const ListedFile*> files;
    std::vector<std::uint64_t> sizes;
    for (const ListedFile& file : list.m_Files) {
        if (file.m_IsInShard) {
            files.push_back(&file);
            sizes.push_back(file.m_Size);
        }
    }
    FileRunResult result;
    Progress progress(console, !look.m_IsQuiet && console.HasProgress(look.m_Progress), sizes);
    Batch<FileOutcome> batch(
        OrderOfWork(sizes),
        [&](std::size_t i) {
            FileOutcome outcome = WorkWithinMemory(*files[i], work);
            progress.AddFile(outcome.m_Bytes);
            return outcome;
        },
        [&](std::size_t i, FileOutcome& outcome) {
            if (!outcome.m_IsTold)
                PrintDiagnostics(*files[i], outcome, printing, console);
            outcome.m_IsTold = true;
            console.Print(outcome.m_Data);
            outcome.m_Data.clear();
            const int found = outcome.m_Log.HasErrors() ? kExitFindings : kExitDone;
            result.m_Status = std::max({result.m_Status, outcome.m_Status, found});
            take(*files[i], outcome);
            return !console.HasLostReader();
        });
    result.m_FileCount = batch.Run(jobs);
    result.m_NotBegun = files.size() - result.m_FileCount;
    return result;
}

int CheckFileList(const FileList& list, std::string_view command, Console& console) {
    if (!list.m_UsageError.empty())
        return console.PrintUsageError(command, list.m_UsageError);
    if (!list.m_ListError.empty()) {
        console.PrintError(list.m_ListError);
        return kExitCouldNotRun;
    }
    return kExitDone;
}

std::string InterruptionText(const FileRunResult& result) {
    return IsInterrupted() ? "interrupted, " + CountOf(result.m_NotBegun, "file") + " not begun; " : std::string();
}

std::string CountOf(std::uint64_t count, std::string_view noun) {
    return std::to_string(count) + " " + std::string(noun) + (count == 1 ? "" : "s");
}

} // namespace Corvid
