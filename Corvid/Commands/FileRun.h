#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "Corvid/Commands/CommonOptions.h"
#include "Corvid/Diagnostics/DiagnosticLog.h"
#include "Corvid/Files/FileBytes.h"
#include "Corvid/Load/LoadedFile.h"

namespace Corvid {

// What became of one file.
struct FileOutcome {
    DiagnosticLog m_Log;
    std::string m_Data;        // for standard output, behind the diagnostics if these go there
    int m_Status = kExitDone;  // as far as the log does not tell
    std::uint64_t m_Bytes = 0; // that were read
    bool m_IsTold = false;     // its diagnostics are printed
    int m_Tally = 0;           // for the command to count; of a file that ran out of memory, 0
};

// Reads the bytes of a file of the list; what goes wrong stands in the outcome. Nothing: it cannot be read.
std::optional<std::string> ReadListedFile(const ListedFile& file, FileOutcome& outcome);

// The same, loaded; `bytes` takes a copy of what was read. Nothing: it cannot be read, or there is too little memory.
std::optional<LoadedFile> LoadListedFile(const ListedFile& file, const LoadOptions& options, FileOutcome& outcome,
                                         std::string* bytes = nullptr);

// Adds what ends with status 2: reading, writing, memory.
void AddFailure(FileOutcome& outcome, DiagnosticCode code, std::string message);

// Where the diagnostics of a run go, and how they look.
struct DiagnosticPrinting {
    DiagnosticStyle m_Style;
    DiagnosticLimits m_Limits;
    bool m_IsData = false;   // to standard output
    bool m_IsSilent = false; // not at all
};

struct FileRunResult {
    int m_Status = kExitDone;
    std::size_t m_FileCount = 0; // files that were worked on
    std::size_t m_NotBegun = 0;  // after an interruption
};

// Works on all files of the list that are in the shard: `work` on several at once, printing and `take` in order.
FileRunResult RunOverFiles(const FileList& list, int jobs, const LookOptions& look, const DiagnosticPrinting& printing,
                           Console& console, const std::function<FileOutcome(const ListedFile&)>& work,
                           const std::function<void(const ListedFile&, const FileOutcome&)>& take);

// Tells of what ends a run before any file is looked at; kExitDone: nothing does.
int CheckFileList(const FileList& list, std::string_view command, Console& console);

// "interrupted; 3 files were not begun", or nothing.
std::string InterruptionText(const FileRunResult& result);

// "1 file", "2 files".
std::string CountOf(std::uint64_t count, std::string_view noun);

} // namespace Corvid
