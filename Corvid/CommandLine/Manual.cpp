#include "Corvid/CommandLine/Manual.h"

namespace Corvid {

namespace {

// Text that the formatter takes as it is: no escapes, no requests at the start of a line.
std::string Escaped(std::string_view text) {
    std::string out;
    if (text.starts_with('.') || text.starts_with('\''))
        out = "\\&";
    for (const char unit : text) {
        if (unit == '\\')
            out += "\\e";
        else if (unit == '-')
            out += "\\-";
        else
            out.push_back(unit);
    }
    return out;
}

// Words of a macro line: what it would take for a macro or a delimiter is quoted.
std::string Quoted(std::string_view text) {
    return "\"" + Escaped(text) + "\"";
}

void AppendOption(std::string& out, const OptionDeclaration& option) {
    out += ".It ";
    const std::string value = option.IsFlag() ? "" : " Ar " + Quoted(option.m_ValueName);
    if (!option.GetShort().empty())
        out += "Fl " + option.GetShort().substr(1) + value;
    if (!option.GetLong().empty())
        out += (option.GetShort().empty() ? "Fl " : " , Fl ") + Escaped(option.GetLong().substr(1)) + value;
    out += "\n" + Escaped(option.m_Help) + "\n";
}

void AppendCommand(std::string& out, std::string_view name, const CommandDeclaration& declaration) {
    out.append(".Ss corvid ").append(Escaped(name)).append("\n");
    out += Escaped(declaration.GetSummary()) + "\n";
    out.append(".Pp\n.Dl corvid ").append(Escaped(name)).append(" ").append(Escaped(declaration.GetSynopsis()));
    out += "\n";
    for (const std::string& text : declaration.GetExplanations())
        out += ".Pp\n" + Escaped(text) + "\n";
    out += ".Bl -tag -width Ds\n";
    if (const OperandDeclaration& operands = declaration.GetOperands(); !operands.m_Name.empty())
        out += ".It Ar " + Quoted(operands.m_Name) + "\n" + Escaped(operands.m_Help) + "\n";
    for (const OptionDeclaration& option : declaration.GetOptions())
        AppendOption(out, option);
    out += ".El\n";
    for (const ExampleDeclaration& example : declaration.GetExamples())
        out += ".Pp\n" + Escaped(example.m_Help) + ":\n.Dl " + Escaped(example.m_Command) + "\n";
}

} // namespace

std::string ManualOf(std::span<const CommandRow> commands) {
    std::string out = ".Dd November 22, 2026\n.Dt CORVID 1\n.Os\n.Sh NAME\n.Nm corvid\n"
                      ".Nd convert, check, compare and show engine data files, many at once\n"
                      ".Sh SYNOPSIS\n.Nm\n.Ar command\n.Op Ar option ...\n.Op Ar path ...\n"
                      ".Sh DESCRIPTION\n.Nm\nworks on meshes, particle effects, brush sets and entity definitions in\n"
                      "their text and binary encodings.\nIt loads them as the engine does, and the engine reads what\n"
                      "it writes.\nData goes to standard output; diagnostics, progress and closing lines go to\n"
                      "standard error.\n"
                      "Diagnostics name the file, the line and column or the offset, the field, and end with a code\n"
                      "in brackets.\n"
                      ".Pp\n"
                      "Options may stand behind paths;\n.Fl \\-\nends them.\n"
                      "Folders are searched for files of the four kinds; names that begin with a dot and symbolic\n"
                      "links to folders are passed over.\n"
                      ".Sh COMMANDS\n";
    for (const CommandRow& row : commands) {
        CommandDeclaration declaration;
        row.m_Make()->Declare(declaration);
        AppendCommand(out, row.m_Name, declaration);
    }
    out +=
        ".Sh ENVIRONMENT\n.Bl -tag -width NO_COLOR\n.It Ev NO_COLOR\nif set, colours are used only with\n"
        ".Fl \\-color Ns = Ns Cm always .\n.It Ev TERM\nif\n.Dq dumb ,\nneither colours nor progress are shown.\n.El\n"
        ".Sh EXIT STATUS\n.Bl -tag -width Ds\n.It 0\ndone, clean, the same, nothing to change\n"
        ".It 1\nfindings: errors in content, a refused file, differences, files that would change\n"
        ".It 2\ncould not run: usage, a path that cannot be read or written, too little memory; 2 wins over 1\n"
        ".El\n.Pp\nAfter an interruption the process ends by the signal that it got.\n"
        ".Sh SEE ALSO\n.Xr recast 1 ,\n.Xr recast\\-archive 5\n";
    return out;
}

} // namespace Corvid
