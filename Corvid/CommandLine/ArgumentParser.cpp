#include "Corvid/CommandLine/ArgumentParser.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include <algorithm>

namespace Corvid {

namespace {

std::string NameOf(const OptionDeclaration& option) {
    return option.GetLong().empty() ? option.GetShort() : option.GetLong();
}

// The library takes an argument in brackets for a list of several. Behind this mark it is a file's name like any other.
constexpr char kMark = '\x1F';

// And a value that is empty for one that is missing: it would take the next argument.
void Mark(std::string& argument) {
    if (argument.starts_with('[') && argument.ends_with(']'))
        argument.insert(argument.begin(), kMark);
    else if (argument.starts_with("--") && argument.find('=') == argument.size() - 1)
        argument.push_back(kMark);
}

std::string WithoutMark(const std::string& argument) {
    return argument.starts_with(kMark) ? argument.substr(1) : argument;
}

void AddOption(CLI::App& app, const OptionDeclaration& option, std::string& error) {
    // The first wrong value is told, under the option's name.
    const auto take = [&option, &error](const std::string& value) {
        if (const std::string wrong = option.m_Take(WithoutMark(value)); !wrong.empty() && error.empty())
            error = NameOf(option) + ": " + wrong;
    };
    if (option.IsFlag()) {
        app.add_flag_callback(option.m_Names, [take] { take({}); })->disable_flag_override();
        return;
    }
    const auto takeAll = [take](const CLI::results_t& values) {
        std::for_each(values.begin(), values.end(), take);
        return true;
    };
    app.add_option(option.m_Names, takeAll)->type_size(1)->expected(1);
}

std::string CountError(const OperandDeclaration& operands) {
    const std::size_t count = operands.m_Values->size();
    const auto fewest = static_cast<std::size_t>(operands.m_Fewest);
    const auto most = static_cast<std::size_t>(operands.m_Most);
    if (count < fewest)
        return count == 0 && most != fewest
                   ? "no " + operands.m_Name + " is given"
                   : std::to_string(operands.m_Fewest) + " " + operands.m_Name + (fewest == 1 ? " is" : "s are") +
                         " wanted, " + std::to_string(count) + " given";
    if (most != 0 && count > most)
        return "too many arguments: '" + (*operands.m_Values)[most] + "'";
    return {};
}

// In the program's own words: what the library says of a command line names its own terms.
std::string TextOf(const CLI::ParseError& error, const CLI::App& app) {
    if (dynamic_cast<const CLI::ArgumentMismatch*>(&error) != nullptr) {
        const std::string text = error.what();
        std::string name = text.substr(0, text.find_first_of(": "));
        if (!name.starts_with('-'))
            name.insert(0, name.size() == 1 ? "-" : "--");
        return text.find("flag override") != text.npos ? name + " takes no value"
               : text.find("At Most") != text.npos     ? name + " is given more than once"
                                                       : name + " needs a value";
    }
    if (dynamic_cast<const CLI::ExtrasError*>(&error) == nullptr)
        return error.what();
    const std::vector<std::string> extras = app.remaining();
    const auto option =
        std::find_if(extras.begin(), extras.end(), [](const std::string& extra) { return extra.starts_with('-'); });
    return option != extras.end() ? "there is no option '" + *option + "'"
                                  : "there is no use for '" + WithoutMark(extras.front()) + "'";
}

} // namespace

ParseResult ParseArguments(const CommandDeclaration& declaration, std::vector<std::string> arguments) {
    ParseResult result;
    CLI::App app;
    app.allow_windows_style_options(false);
    app.set_help_flag("-h,--help");
    app.set_version_flag("-V,--version", std::string());
    for (const OptionDeclaration& option : declaration.GetOptions())
        AddOption(app, option, result.m_Error);
    const OperandDeclaration& operands = declaration.GetOperands();
    if (operands.m_Values != nullptr) {
        app.add_option(operands.m_Name,
                       [&operands](const CLI::results_t& values) {
                           for (const std::string& value : values)
                               operands.m_Values->push_back(WithoutMark(value));
                           return true;
                       })
            ->type_size(1)
            ->expected(0, CLI::detail::expected_max_vector_size)
            ->allow_extra_args();
    }
    try {
        std::for_each(arguments.begin(), arguments.end(), Mark);
        std::reverse(arguments.begin(), arguments.end());
        app.parse(std::move(arguments));
    } catch (const CLI::CallForHelp&) {
        result.m_IsHelpWanted = true;
        return result;
    } catch (const CLI::CallForVersion&) {
        result.m_IsVersionWanted = true;
        return result;
    } catch (const CLI::ParseError& error) {
        if (result.m_Error.empty())
            result.m_Error = TextOf(error, app);
        return result;
    }
    for (const OptionDeclaration& option : declaration.GetOptions()) {
        if (option.m_IsRequired && app.count(NameOf(option)) == 0 && result.m_Error.empty())
            result.m_Error = NameOf(option) + " " + option.m_ValueName + " is required";
    }
    if (result.m_Error.empty() && operands.m_Values != nullptr)
        result.m_Error = CountError(operands);
    return result;
}

} // namespace Corvid
