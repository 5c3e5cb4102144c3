#include "Corvid/CommandLine/Completions.h"

#include <algorithm>
#include <vector>

namespace Corvid {

namespace {

struct DeclaredCommand {
    std::string m_Name;
    CommandDeclaration m_Declaration;

    std::string GetFirstWord() const { return m_Name.substr(0, m_Name.find(' ')); }
    std::string GetSecondWord() const {
        const std::size_t blank = m_Name.find(' ');
        return blank == std::string::npos ? std::string() : m_Name.substr(blank + 1);
    }
};

// With the options that every command has.
std::vector<DeclaredCommand> Declare(std::span<const CommandRow> commands) {
    static bool isWanted = false; // a place for a value that nobody asks for
    std::vector<DeclaredCommand> declared;
    for (const CommandRow& row : commands) {
        DeclaredCommand& command = declared.emplace_back();
        command.m_Name = row.m_Name;
        row.m_Make()->Declare(command.m_Declaration);
        command.m_Declaration.Flag("-h,--help", isWanted, "show help and end");
        command.m_Declaration.Flag("-V,--version", isWanted, "show the version and end");
    }
    return declared;
}

std::vector<std::string> FirstWords(const std::vector<DeclaredCommand>& commands) {
    std::vector<std::string> words;
    for (const DeclaredCommand& command : commands) {
        if (std::find(words.begin(), words.end(), command.GetFirstWord()) == words.end())
            words.push_back(command.GetFirstWord());
    }
    return words;
}

// First words that name a command only with a second one.
std::vector<std::string> GroupWords(const std::vector<DeclaredCommand>& commands) {
    std::vector<std::string> words;
    for (const DeclaredCommand& command : commands) {
        if (!command.GetSecondWord().empty() &&
            std::find(words.begin(), words.end(), command.GetFirstWord()) == words.end())
            words.push_back(command.GetFirstWord());
    }
    return words;
}

std::vector<std::string> SecondWords(const std::vector<DeclaredCommand>& commands, const std::string& group) {
    std::vector<std::string> words;
    for (const DeclaredCommand& command : commands) {
        if (command.GetFirstWord() == group)
            words.push_back(command.GetSecondWord());
    }
    return words;
}

std::string Joined(const std::vector<std::string>& words, std::string_view between = " ") {
    std::string text;
    for (const std::string& word : words)
        text.append(text.empty() ? "" : between).append(word);
    return text;
}

std::vector<std::string> NamesOf(const OptionDeclaration& option) {
    std::vector<std::string> names;
    for (const std::string& name : {option.GetShort(), option.GetLong()}) {
        if (!name.empty())
            names.push_back(name);
    }
    return names;
}

// Within single quotes of a shell.
std::string Quoted(std::string_view text, std::string_view quoteAs) {
    std::string out;
    for (const char unit : text)
        out += unit == '\'' ? std::string(quoteAs) : std::string(1, unit);
    return out;
}

std::string BashCaseOf(const DeclaredCommand& command) {
    std::string out = "    '" + command.m_Name + "')\n        case $prev in\n";
    std::vector<std::string> names;
    for (const OptionDeclaration& option : command.m_Declaration.GetOptions()) {
        for (const std::string& name : NamesOf(option))
            names.push_back(name);
        if (option.IsFlag())
            continue;
        out += "        " + Joined(NamesOf(option), "|") + ") ";
        if (!option.m_Choices.empty())
            out += "COMPREPLY=($(compgen -W '" + Joined(option.m_Choices) + "' -- \"$cur\")); ";
        out += "return ;;\n"; // otherwise the names of files
    }
    out += "        esac\n        [[ $cur == -* ]] && COMPREPLY=($(compgen -W '" + Joined(names) +
           "' -- \"$cur\"))\n        ;;\n";
    return out;
}

} // namespace

std::string BashCompletionsOf(std::span<const CommandRow> commands) {
    const std::vector<DeclaredCommand> declared = Declare(commands);
    std::string out =
        "# bash completion for corvid\n"
        "_corvid() {\n"
        "    local cur=${COMP_WORDS[COMP_CWORD]} prev=${COMP_WORDS[COMP_CWORD-1]} command=${COMP_WORDS[1]}\n"
        "    COMPREPLY=()\n"
        "    [[ $cur == '=' ]] && cur= # --option=value comes as three words\n"
        "    [[ $prev == '=' ]] && prev=${COMP_WORDS[COMP_CWORD-2]}\n"
        "    if ((COMP_CWORD == 1)); then\n"
        "        COMPREPLY=($(compgen -W '" +
        Joined(FirstWords(declared)) + " --help --version' -- \"$cur\"))\n        return\n    fi\n";
    for (const std::string& word : GroupWords(declared)) {
        out += "    if [[ $command == " + word + " ]]; then\n        command=\"" + word + " ${COMP_WORDS[2]}\"\n" +
               "        if ((COMP_CWORD == 2)); then\n            COMPREPLY=($(compgen -W '" +
               Joined(SecondWords(declared, word)) + "' -- \"$cur\"))\n            return\n        fi\n    fi\n";
    }
    out += "    case $command in\n";
    for (const DeclaredCommand& command : declared)
        out += BashCaseOf(command);
    return out + "    esac\n}\ncomplete -o default -o bashdefault -F _corvid corvid\n";
}

std::string ZshCompletionsOf(std::span<const CommandRow> commands) {
    const std::vector<DeclaredCommand> declared = Declare(commands);
    std::string out = "#compdef corvid\n"
                      "# zsh completion for corvid\n"
                      "_corvid() {\n"
                      "    if ((CURRENT == 2)); then\n"
                      "        compadd -- " +
                      Joined(FirstWords(declared)) +
                      " --help --version\n        return\n    fi\n"
                      "    local command=$words[2]\n";
    for (const std::string& word : GroupWords(declared)) {
        out += "    if [[ $command == " + word + " ]]; then\n        command=\"" + word + " $words[3]\"\n" +
               "        if ((CURRENT == 3)); then\n            compadd -- " + Joined(SecondWords(declared, word)) +
               "\n            return\n        fi\n    fi\n";
    }
    out += "    case $command in\n";
    for (const DeclaredCommand& command : declared) {
        out += "    '" + command.m_Name + "')\n        _arguments \\\n";
        for (const OptionDeclaration& option : command.m_Declaration.GetOptions()) {
            std::string help = Quoted(option.m_Help, "'\\''");
            for (const char bracket : {'[', ']', ':'}) { // which mark the parts of a line
                for (std::size_t i = help.find(bracket); i != std::string::npos; i = help.find(bracket, i + 2))
                    help.insert(i, "\\");
            }
            for (const std::string& name : NamesOf(option)) {
                out += "            '" + name;
                if (!option.IsFlag())
                    out += name.starts_with("--") ? "=" : "+"; // the value in the same word, or in the next one
                out += "[" + help + "]";
                if (!option.IsFlag())
                    out += option.m_Choices.empty() ? ":value:_files" : ":value:(" + Joined(option.m_Choices) + ")";
                out += "' \\\n";
            }
        }
        out += "            '*:path:_files'\n        ;;\n";
    }
    return out + "    esac\n}\n_corvid \"$@\"\n";
}

std::string FishCompletionsOf(std::span<const CommandRow> commands) {
    const std::vector<DeclaredCommand> declared = Declare(commands);
    const std::string first = Joined(FirstWords(declared));
    const std::vector<std::string> groups = GroupWords(declared);
    std::string out = "# fish completion for corvid\n";
    for (const std::string& word : groups)
        out += "complete -c corvid -n 'not __fish_seen_subcommand_from " + first + "' -f -a " + word + "\n";
    for (const DeclaredCommand& command : declared) {
        const std::string begin = "complete -c corvid ";
        std::string condition = "-n '__fish_seen_subcommand_from " + command.GetFirstWord();
        const std::string help = Quoted(command.m_Declaration.GetSummary(), "\\'");
        if (command.GetSecondWord().empty()) {
            out += begin + "-n 'not __fish_seen_subcommand_from " + first + "' -f -a " + command.m_Name + " -d '" +
                   help + "'\n";
            condition += "; and not __fish_seen_subcommand_from " + Joined(groups);
        } else {
            out += begin + condition + "; and not __fish_seen_subcommand_from " +
                   Joined(SecondWords(declared, command.GetFirstWord())) + "' -f -a " + command.GetSecondWord() +
                   " -d '" + help + "'\n";
            condition += "; and __fish_seen_subcommand_from " + command.GetSecondWord();
        }
        condition += "'";
        for (const OptionDeclaration& option : command.m_Declaration.GetOptions()) {
            out += begin + condition;
            if (!option.GetShort().empty())
                out += " -s " + option.GetShort().substr(1);
            if (!option.GetLong().empty())
                out += " -l " + option.GetLong().substr(2);
            if (!option.m_Choices.empty())
                out += " -x -a '" + Joined(option.m_Choices) + "'";
            else if (!option.IsFlag())
                out += " -r";
            out += " -d '" + Quoted(option.m_Help, "\\'") + "'\n";
        }
    }
    return out;
}

} // namespace Corvid
