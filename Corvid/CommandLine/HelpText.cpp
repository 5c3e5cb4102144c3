#include "Corvid/CommandLine/HelpText.h"

#include <algorithm>

namespace Corvid {

namespace {

constexpr std::size_t kWidth = 100;
constexpr std::size_t kHelpColumn = 30;

// Breaks at blanks; every line but the first is indented.
void AppendWrapped(std::string& out, std::string_view text, std::size_t indent, std::size_t column) {
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(' '), text.size());
        if (column + end > kWidth && column > indent) {
            out.back() = '\n';
            out.append(indent, ' ');
            column = indent;
        }
        out.append(text.substr(0, end)).push_back(' ');
        column += end + 1;
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    out.back() = '\n';
}

void AppendRow(std::string& out, std::string left, std::string_view help) {
    left = "  " + left;
    if (left.size() + 2 > kHelpColumn) {
        out += left + "\n";
        left.clear();
    }
    left.resize(kHelpColumn, ' ');
    out += left;
    AppendWrapped(out, help, kHelpColumn, kHelpColumn);
}

std::string LeftOf(const OptionDeclaration& option) {
    std::string text = option.GetShort().empty() ? "    " : option.GetShort();
    if (!option.GetLong().empty())
        text += (option.GetShort().empty() ? "" : ", ") + option.GetLong();
    if (!option.IsFlag())
        text += " " + option.m_ValueName;
    return text;
}

} // namespace

std::string HelpOf(std::string_view name, const CommandDeclaration& declaration) {
    std::string out;
    AppendWrapped(out, declaration.GetSummary(), 0, 0);
    out.append("\nUsage: corvid ").append(name).append(" ").append(declaration.GetSynopsis()).append("\n");
    for (const std::string& text : declaration.GetExplanations()) {
        out += '\n';
        AppendWrapped(out, text, 0, 0);
    }
    if (!declaration.GetOperands().m_Name.empty()) {
        out += "\nArguments:\n";
        AppendRow(out, declaration.GetOperands().m_Name, declaration.GetOperands().m_Help);
    }
    out += "\nOptions:\n";
    for (const OptionDeclaration& option : declaration.GetOptions())
        AppendRow(out, LeftOf(option), option.m_Help);
    AppendRow(out, "-h, --help", "show this and end");
    AppendRow(out, "-V, --version", "show the version and end");
    if (!declaration.GetExamples().empty())
        out += "\nExamples:\n";
    for (const ExampleDeclaration& example : declaration.GetExamples()) {
        out += "  " + example.m_Command + "\n      ";
        AppendWrapped(out, example.m_Help, 6, 6);
    }
    return out;
}

std::string HelpOf(std::span<const CommandRow> commands) {
    std::string out =
        "Converts, checks, compares and shows the data files of the engine: many at once, with places of\n"
        "errors and statuses that scripts can use.\n\n"
        "Usage: corvid COMMAND [OPTION]... [PATH]...\n\nCommands:\n";
    for (const CommandRow& row : commands) {
        CommandDeclaration declaration;
        row.m_Make()->Declare(declaration);
        AppendRow(out, std::string(row.m_Name), declaration.GetSummary());
    }
    out += "\nOptions:\n";
    AppendRow(out, "-h, --help", "show this, or the help of a command, and end");
    AppendRow(out, "-V, --version", "show the version and end");
    AppendRow(out, "    --generate WHAT",
              "write man, bash, zsh or fish: the manual page, or the completions of a shell");
    out +=
        "\nExit status: 0 done and clean, 1 findings (errors, differences, files that would change), 2 could not run.\n"
        "\nExamples:\n"
        "  corvid check Examples/Mesh\n"
        "  corvid convert --to txt -o text Examples/Mesh\n"
        "  corvid cat Examples/Mesh/cube-binary.mesh\n"
        "  corvid convert --help\n";
    return out;
}

} // namespace Corvid
