#pragma once

#include <mutex>
#include <string>
#include <string_view>

#include "Corvid/Terminal/TextOutput.h"

namespace Corvid {

inline constexpr int kExitDone = 0;
inline constexpr int kExitFindings = 1;    // errors in content, refused files, differences
inline constexpr int kExitCouldNotRun = 2; // usage, paths that cannot be read or written, too little memory

enum class Look { Auto, Always, Never };

// What the environment says about terminals.
struct TerminalFacts {
    bool m_IsDumb = false;          // TERM is "dumb"
    bool m_IsColorUnwanted = false; // NO_COLOR is set
};

// The two outputs of a run and the one line of progress, which never mixes with what is printed.
class Console {
public:
    Console(TextOutput& output, TextOutput& errors, TerminalFacts facts = {});
    ~Console();
    Console(const Console&) = delete;
    Console& operator=(const Console&) = delete;

    // Data, for standard output: gathered, unless it is a terminal.
    void Print(std::string_view text);
    // For standard error, behind what was printed before.
    void PrintError(std::string_view text);
    // "corvid COMMAND: message", and where help is; returns the status.
    int PrintUsageError(std::string_view command, std::string_view message);

    // Nobody reads the data any more: the run may end, quietly.
    bool HasLostReader() const { return m_HasLostReader; }

    // Whether every byte of data was taken; the first failure has been told. To be asked at the end of a run.
    bool Finish();

    bool HasColor(Look look, bool isForErrors) const;
    bool HasProgress(Look look) const;

    // Shows one line in place of the last one; empty: takes it away. May be called from another thread.
    void ShowProgress(std::string_view line);
    int GetProgressColumns() const { return m_Errors.GetColumns(); }

private:
    void Flush();
    void HideProgress();

    TextOutput& m_Output;
    TextOutput& m_Errors;
    TerminalFacts m_Facts;
    std::mutex m_Mutex;
    std::string m_Gathered;
    bool m_IsProgressShown = false;
    bool m_HasLostReader = false;
    bool m_HasFailed = false;
};

} // namespace Corvid
