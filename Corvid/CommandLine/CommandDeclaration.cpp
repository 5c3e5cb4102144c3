#include "Corvid/CommandLine/CommandDeclaration.h"

#include <charconv>

namespace Corvid {

std::string OptionDeclaration::GetShort() const {
    return m_Names.starts_with("--") ? std::string() : m_Names.substr(0, m_Names.find(','));
}

std::string OptionDeclaration::GetLong() const {
    const std::size_t place = m_Names.find("--");
    return place == std::string::npos ? std::string() : m_Names.substr(place);
}

void CommandDeclaration::Flag(std::string names, bool& value, std::string help) {
    OptionDeclaration option;
    option.m_Names = std::move(names);
    option.m_Help = std::move(help);
    option.m_Take = [&value](const std::string&) {
        value = true;
        return std::string();
    };
    m_Options.push_back(std::move(option));
}

void CommandDeclaration::Text(std::string names, std::string valueName, std::string& value, std::string help,
                              ValueRole role) {
    Take(
        std::move(names), std::move(valueName),
        [&value](const std::string& text) {
            value = text;
            return std::string();
        },
        std::move(help), role);
}

void CommandDeclaration::Text(std::string names, std::string valueName, std::optional<std::string>& value,
                              std::string help, ValueRole role) {
    Take(
        std::move(names), std::move(valueName),
        [&value](const std::string& text) {
            value = text;
            return std::string();
        },
        std::move(help), role);
}

void CommandDeclaration::Take(std::string names, std::string valueName, TakeValue take, std::string help,
                              ValueRole role) {
    OptionDeclaration option;
    option.m_Names = std::move(names);
    option.m_ValueName = std::move(valueName);
    option.m_Help = std::move(help);
    option.m_Role = role;
    option.m_Take = std::move(take);
    m_Options.push_back(std::move(option));
}

void CommandDeclaration::Operands(std::string name, std::vector<std::string>& values, int fewest, int most,
                                  std::string help) {
    m_Operands = {std::move(name), std::move(help), fewest, most, &values};
}

std::string CommandDeclaration::TakeNumber(const std::string& text, std::int64_t fewest, std::int64_t most,
                                           std::int64_t& value) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error == std::errc() && end == text.data() + text.size() && value >= fewest && value <= most)
        return {};
    return "'" + text + "' is no whole number of at least " + std::to_string(fewest);
}

} // namespace Corvid
