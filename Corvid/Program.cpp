#include "Corvid/Program.h"

#include <algorithm>
#include <new>

#include "Corvid/CommandLine/ArgumentParser.h"
#include "Corvid/CommandLine/Completions.h"
#include "Corvid/CommandLine/HelpText.h"
#include "Corvid/CommandLine/Manual.h"
#include "Corvid/Commands/CommandTable.h"
#include "Corvid/Version.h"

namespace Corvid {

namespace {

// How many arguments name the command of the row: 0 when they name another.
std::size_t WordsNaming(const CommandRow& row, const std::vector<std::string>& arguments) {
    const std::size_t blank = row.m_Name.find(' ');
    if (arguments[0] != row.m_Name.substr(0, blank))
        return 0;
    if (blank == std::string_view::npos)
        return 1;
    return arguments.size() > 1 && arguments[1] == row.m_Name.substr(blank + 1) ? 2 : 0;
}

int PrintVersion(Console& console) {
    console.Print("corvid " CORVID_VERSION "\n");
    return kExitDone;
}

int RunRow(const CommandRow& row, std::vector<std::string> arguments, Console& console) {
    const std::unique_ptr<Command> command = row.m_Make();
    CommandDeclaration declaration;
    command->Declare(declaration);
    const ParseResult parsed = ParseArguments(declaration, std::move(arguments));
    if (parsed.m_IsHelpWanted) {
        console.Print(HelpOf(row.m_Name, declaration));
        return kExitDone;
    }
    if (parsed.m_IsVersionWanted)
        return PrintVersion(console);
    if (!parsed.m_Error.empty())
        return console.PrintUsageError(row.m_Name, parsed.m_Error);
    return command->Run(console);
}

// Documents that are made from the declarations of the commands, so that they cannot drift.
int PrintGenerated(const std::string& what, Console& console) {
    struct Document {
        std::string_view m_Name;
        std::string (*m_Make)(std::span<const CommandRow>);
    };
    constexpr Document kDocuments[] = {
        {"man", ManualOf}, {"bash", BashCompletionsOf}, {"zsh", ZshCompletionsOf}, {"fish", FishCompletionsOf}};
    for (const Document& document : kDocuments) {
        if (document.m_Name == what) {
            console.Print(document.m_Make(GetCommands()));
            return kExitDone;
        }
    }
    return console.PrintUsageError("", "--generate: '" + what + "' is none of man|bash|zsh|fish");
}

// A word that begins the names of several commands.
int PrintGroup(const std::string& group, const std::vector<std::string>& arguments, Console& console) {
    std::string commands;
    std::vector<CommandRow> rows;
    for (const CommandRow& row : GetCommands()) {
        if (!row.m_Name.starts_with(group + " "))
            continue;
        rows.push_back(row);
        commands.append(commands.empty() ? "" : "|").append(row.m_Name.substr(group.size() + 1));
    }
    if (arguments.size() > 1 && (arguments[1] == "-h" || arguments[1] == "--help")) {
        console.Print(HelpOf(rows));
        return kExitDone;
    }
    if (arguments.size() > 1 && (arguments[1] == "-V" || arguments[1] == "--version"))
        return PrintVersion(console);
    return console.PrintUsageError(group, arguments.size() > 1 ? "'" + arguments[1] + "' is none of " + commands
                                                               : "which of " + commands + "?");
}

int RunWithoutCommand(const std::vector<std::string>& arguments, Console& console) {
    const std::string& first = arguments[0];
    if (first == "-h" || first == "--help") {
        console.Print(HelpOf(GetCommands()));
        return kExitDone;
    }
    if (first == "-V" || first == "--version")
        return PrintVersion(console);
    if (first == "--generate" && arguments.size() == 2)
        return PrintGenerated(arguments[1], console);
    if (first.starts_with("-"))
        return console.PrintUsageError("", "there is no option '" + first + "'");
    for (const CommandRow& row : GetCommands()) {
        if (row.m_Name.starts_with(first + " "))
            return PrintGroup(first, arguments, console);
    }
    return console.PrintUsageError("", "there is no command '" + first + "'");
}

} // namespace

int RunCorvid(std::vector<std::string> arguments, Console& console) {
    if (arguments.empty()) {
        console.PrintError(HelpOf(GetCommands()));
        return kExitCouldNotRun;
    }
    int status = kExitCouldNotRun;
    try {
        const auto commands = GetCommands();
        const auto row = std::find_if(commands.begin(), commands.end(),
                                      [&](const CommandRow& each) { return WordsNaming(each, arguments) > 0; });
        if (row == commands.end()) {
            status = RunWithoutCommand(arguments, console);
        } else {
            const auto words = static_cast<std::ptrdiff_t>(WordsNaming(*row, arguments));
            status = RunRow(*row, {arguments.begin() + words, arguments.end()}, console);
        }
    } catch (const std::bad_alloc&) {
        console.PrintError("corvid: there is not enough memory\n");
    }
    return console.Finish() ? status : kExitCouldNotRun;
}

} // namespace Corvid
