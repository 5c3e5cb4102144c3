#pragma once

#include <concepts>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Corvid {

// Takes the value of an option; empty, or what is wrong with it.
using TakeValue = std::function<std::string(const std::string&)>;

enum class ValueRole { Word, File, Folder }; // what completion offers

struct OptionDeclaration {
    std::string m_Names;     // "-o,--output": the short one first; either may be missing
    std::string m_ValueName; // as help shows it; empty: a flag
    std::string m_Help;      // a lower-case clause
    std::vector<std::string> m_Choices;
    ValueRole m_Role = ValueRole::Word;
    bool m_IsRequired = false;
    TakeValue m_Take;

    bool IsFlag() const { return m_ValueName.empty(); }
    std::string GetShort() const; // "-o" or empty
    std::string GetLong() const;  // "--output" or empty
};

// The arguments that are no options.
struct OperandDeclaration {
    std::string m_Name; // as help shows it: "PATH"
    std::string m_Help;
    int m_Fewest = 0; // after the options were taken
    int m_Most = 0;   // 0: any number
    std::vector<std::string>* m_Values = nullptr;
};

struct ExampleDeclaration {
    std::string m_Command; // works in the project's folder
    std::string m_Help;
};

// What a command is called with, declared once: parsing, help, manual page and completions are made from this. The
// values go where the declaration says, while the command line is parsed.
class CommandDeclaration {
public:
    // What the command is for, in a sentence; how it is called behind its name.
    void Describe(std::string summary, std::string synopsis) {
        m_Summary = std::move(summary);
        m_Synopsis = std::move(synopsis);
    }
    // Paragraphs for the manual page and the help.
    void Explain(std::string text) { m_Explanations.push_back(std::move(text)); }
    void Example(std::string command, std::string help) { m_Examples.push_back({std::move(command), std::move(help)}); }

    void Flag(std::string names, bool& value, std::string help);
    void Text(std::string names, std::string valueName, std::string& value, std::string help,
              ValueRole role = ValueRole::Word);
    void Text(std::string names, std::string valueName, std::optional<std::string>& value, std::string help,
              ValueRole role = ValueRole::Word);
    // A whole number of at least `fewest`.
    template <std::integral Integer>
    void Number(std::string names, std::string valueName, Integer& value, std::int64_t fewest, std::string help);
    // One of a set of words. `Value` may be an optional.
    template <class Value, class Choice = Value>
    void OneOf(std::string names, Value& value, std::vector<std::pair<std::string, Choice>> choices, std::string help);
    void Take(std::string names, std::string valueName, TakeValue take, std::string help,
              ValueRole role = ValueRole::Word);
    // The option that was declared last has to be given.
    void Require() { m_Options.back().m_IsRequired = true; }

    void Operands(std::string name, std::vector<std::string>& values, int fewest, int most, std::string help);

    const std::string& GetSummary() const { return m_Summary; }
    const std::string& GetSynopsis() const { return m_Synopsis; }
    const std::vector<std::string>& GetExplanations() const { return m_Explanations; }
    const std::vector<OptionDeclaration>& GetOptions() const { return m_Options; }
    const OperandDeclaration& GetOperands() const { return m_Operands; }
    const std::vector<ExampleDeclaration>& GetExamples() const { return m_Examples; }

private:
    static std::string TakeNumber(const std::string& text, std::int64_t fewest, std::int64_t most, std::int64_t& value);

    std::string m_Summary;
    std::string m_Synopsis;
    std::vector<std::string> m_Explanations;
    std::vector<OptionDeclaration> m_Options;
    OperandDeclaration m_Operands;
    std::vector<ExampleDeclaration> m_Examples;
};

template <std::integral Integer>
void CommandDeclaration::Number(std::string names, std::string valueName, Integer& value, std::int64_t fewest,
                                std::string help) {
    Take(
        std::move(names), std::move(valueName),
        [&value, fewest](const std::string& text) {
            std::int64_t number = 0;
            const std::int64_t most = static_cast<std::int64_t>(std::uint64_t{1} << (sizeof(Integer) > 4 ? 52 : 30));
            std::string error = TakeNumber(text, fewest, most, number);
            if (error.empty())
                value = static_cast<Integer>(number);
            return error;
        },
        std::move(help));
}

template <class Value, class Choice>
void CommandDeclaration::OneOf(std::string names, Value& value, std::vector<std::pair<std::string, Choice>> choices,
                               std::string help) {
    std::vector<std::string> words;
    std::string list;
    for (const auto& choice : choices) {
        words.push_back(choice.first);
        list += list.empty() ? choice.first : "|" + choice.first;
    }
    Take(
        std::move(names), list,
        [&value, choices = std::move(choices), list](const std::string& text) -> std::string {
            for (const auto& [word, choice] : choices) {
                if (word == text) {
                    value = choice;
                    return {};
                }
            }
            return "'" + text + "' is none of " + list;
        },
        std::move(help));
    m_Options.back().m_Choices = std::move(words);
}

} // namespace Corvid
