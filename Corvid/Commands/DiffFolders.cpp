#include "Corvid/Commands/DiffFolders.h"

#include <algorithm>
#include <new>

#include "Corvid/Commands/DiffPair.h"
#include "Corvid/Compare/FilePairs.h"
#include "Corvid/Files/FailureLine.h"
#include "Corvid/Files/PrintedPath.h"
#include "Corvid/Terminal/Progress.h"

namespace Corvid {

namespace {

FileList FilesOf(const std::string& folder) {
    FileSelection selection;
    selection.m_Paths = {folder};
    return FindFiles(selection, {});
}

std::vector<std::string> NamesOf(const FileList& list) {
    std::vector<std::string> names;
    for (const ListedFile& file : list.m_Files)
        names.push_back(file.m_Name);
    return names;
}

// Whether the file may be in the other folder all the same: in a part of it that cannot be seen into.
bool MayBeIn(const FileList& other, const std::string& name) {
    return std::any_of(other.m_Files.begin(), other.m_Files.end(), [&](const ListedFile& file) {
        return file.m_IsFolder && (file.m_Name.empty() || name.starts_with(file.m_Name + '/'));
    });
}

class FolderDiff {
public:
    FolderDiff(const std::string& before, const std::string& after, const DiffOptions& options, Console& console)
        : m_Before(FilesOf(before)),
          m_After(FilesOf(after)),
          m_Pairs(PairFiles(NamesOf(m_Before), NamesOf(m_After))),
          m_Options(options),
          m_Console(console) {
        m_Style.m_IsFileOnLines = true;
        m_Style.m_IsOneOfMany = true;
        m_Style.m_HasColor = console.HasColor(options.m_Look.m_Color, false);
        m_Style.m_HasErrorColor = console.HasColor(options.m_Look.m_Color, true);
    }

    int Run() {
        std::vector<std::uint64_t> sizes;
        for (const FilePair& pair : m_Pairs)
            sizes.push_back(pair.m_Before && pair.m_After
                                ? m_Before.m_Files[*pair.m_Before].m_Size + m_After.m_Files[*pair.m_After].m_Size
                                : 0);
        int status = kExitDone;
        Progress progress(m_Console, !m_Options.m_Look.m_IsQuiet && m_Console.HasProgress(m_Options.m_Look.m_Progress),
                          sizes);
        Batch<DiffOutcome> batch(
            OrderOfWork(sizes),
            [&](std::size_t i) {
                DiffOutcome outcome = Compare(m_Pairs[i]);
                progress.AddFile(outcome.m_Bytes);
                return outcome;
            },
            [&](std::size_t, DiffOutcome& outcome) {
                if (!outcome.m_Errors.empty())
                    m_Console.PrintError(outcome.m_Errors);
                outcome.m_Errors.clear(); // and not told again, should the data want for memory
                m_Console.Print(outcome.m_Data);
                status = std::max(status, outcome.m_Status);
                return !m_Console.HasLostReader();
            });
        FileRunResult result;
        result.m_FileCount = batch.Run(m_Options.m_Jobs);
        result.m_NotBegun = m_Pairs.size() - result.m_FileCount;
        if (IsInterrupted())
            m_Console.PrintError(InterruptionText(result) + CountOf(result.m_FileCount, "file") + " compared\n");
        return status;
    }

private:
    DiffOutcome Compare(const FilePair& pair) const {
        DiffStyle style = m_Style;
        style.m_File = pair.m_After ? m_After.m_Files[*pair.m_After].m_Name : m_Before.m_Files[*pair.m_Before].m_Name;
        DiffOutcome outcome;
        try {
            if (pair.m_Before && pair.m_After) {
                const ListedFile& before = m_Before.m_Files[*pair.m_Before];
                const ListedFile& after = m_After.m_Files[*pair.m_After];
                return DiffTwoFiles({before, before.m_Path}, {after, after.m_Path}, m_Options, style);
            }
            const ListedFile& only = pair.m_After ? m_After.m_Files[*pair.m_After] : m_Before.m_Files[*pair.m_Before];
            if (only.m_Error.empty() && MayBeIn(pair.m_After ? m_Before : m_After, only.m_Name))
                return outcome;
            if (only.m_Error.empty())
                TellFileChange(outcome, pair.m_After ? Change::Added : Change::Removed, m_Options, style);
            else
                TellUnreadable(outcome, only);
        } catch (const std::bad_alloc&) {
            outcome.m_Errors = FailureLine(style.m_File, DiagnosticCode::CannotRead, "there is not enough memory");
            outcome.m_Status = kExitCouldNotRun;
        }
        return outcome;
    }

    static void TellUnreadable(DiffOutcome& outcome, const ListedFile& file) {
        FileOutcome read;
        ReadListedFile(file, read);
        for (const ShownDiagnostic& shown : SelectShown(read.m_Log, {}))
            AppendDiagnostic(outcome.m_Errors, file.m_Path, PrintedPath(file.m_Path), shown, {});
        outcome.m_Status = kExitCouldNotRun;
    }

    FileList m_Before;
    FileList m_After;
    std::vector<FilePair> m_Pairs;
    const DiffOptions& m_Options;
    Console& m_Console;
    DiffStyle m_Style;
};

} // namespace

int DiffTwoFolders(const std::string& before, const std::string& after, const DiffOptions& options, Console& console) {
    return FolderDiff(before, after, options, console).Run();
}

} // namespace Corvid
