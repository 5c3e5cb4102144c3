#pragma once

#include <cstdint>
#include <string>

#include "Corvid/Commands/Diff.h"
#include "Corvid/Commands/FileRun.h"
#include "Corvid/Compare/Difference.h"

namespace Corvid {

// One side of a pair.
struct DiffSide {
    ListedFile m_File;
    std::string m_ShownPath; // in diagnostics, and for the kind
};

struct DiffStyle {
    std::string m_File;           // that lines and objects name
    bool m_IsFileOnLines = false; // in front of every line of text
    bool m_HasColor = false;      // of the data
    bool m_HasErrorColor = false;
    bool m_IsOneOfMany = false; // what cannot be compared is a finding, and not the end of the run
};

// What became of a pair: data for standard output, diagnostics for standard error.
struct DiffOutcome {
    std::string m_Data;
    std::string m_Errors;
    int m_Status = kExitDone;
    std::uint64_t m_Bytes = 0;
};

DiffOutcome DiffTwoFiles(const DiffSide& before, const DiffSide& after, const DiffOptions& options,
                         const DiffStyle& style);

// A file that only one side has, or that got another path: `from`.
void TellFileChange(DiffOutcome& outcome, Change change, const DiffOptions& options, const DiffStyle& style,
                    const std::string& from = {});

} // namespace Corvid
