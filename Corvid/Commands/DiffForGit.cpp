#include "Corvid/Commands/DiffForGit.h"

#include <cstdlib>

#include "Corvid/Commands/DiffPair.h"
#include "Corvid/Files/PrintedPath.h"

namespace Corvid {

namespace {

constexpr std::size_t kOldFile = 1;
constexpr std::size_t kNewFile = 4;
constexpr std::size_t kNewPath = 7;
constexpr std::size_t kCountOfOnePath = 7;
constexpr std::size_t kCountOfTwoPaths = 9;

constexpr const char* kNothing = "/dev/null"; // git's word for a file that is not there, on Windows, too

DiffSide SideOf(const std::string& file, const std::string& path) {
    DiffSide side;
    side.m_File.m_Path = file;
    side.m_ShownPath = path;
    return side;
}

} // namespace

bool IsCalledByGit(const std::vector<std::string>& operands) {
    if (operands.size() == 1)
        return std::getenv("GIT_DIFF_PATH_COUNTER") != nullptr;
    return operands.size() == kCountOfOnePath || operands.size() == kCountOfTwoPaths;
}

int DiffForGit(const DiffOptions& options, Console& console) {
    const std::vector<std::string>& operands = options.m_Paths;
    if (operands.size() == 1) {
        console.Print(PrintedPath(operands[0]) + ": unmerged\n");
        return kExitDone;
    }
    DiffStyle style;
    style.m_File = operands.size() == kCountOfTwoPaths ? operands[kNewPath] : operands[0];
    style.m_IsFileOnLines = true;
    style.m_HasColor = console.HasColor(options.m_Look.m_Color, false);
    style.m_HasErrorColor = console.HasColor(options.m_Look.m_Color, true);

    DiffOutcome outcome;
    if (operands[kOldFile] == kNothing || operands[kNewFile] == kNothing) {
        TellFileChange(outcome, operands[kOldFile] == kNothing ? Change::Added : Change::Removed, options, style);
    } else {
        if (style.m_File != operands[0]) {
            TellFileChange(outcome, Change::Moved, options, style, operands[0]);
            console.Print(outcome.m_Data);
        }
        outcome = DiffTwoFiles(SideOf(operands[kOldFile], operands[0]), SideOf(operands[kNewFile], style.m_File),
                               options, style);
    }
    if (!outcome.m_Errors.empty())
        console.PrintError(outcome.m_Errors);
    console.Print(outcome.m_Data);
    if (outcome.m_Status == kExitCouldNotRun && options.m_Format == DiffFormat::Text && !options.m_Look.m_IsQuiet)
        console.Print(PrintedPath(style.m_File) + ": cannot be compared\n");
    return kExitDone;
}

} // namespace Corvid
