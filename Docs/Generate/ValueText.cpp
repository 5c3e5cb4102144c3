#include "Docs/Generate/ValueText.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace Corvid {

namespace {

constexpr std::size_t kLongestNumber = 20;

// "1.500000" as "1.5", "2.000000" as "2", and the limits of a type in scientific form.
std::string TidyNumber(std::string word) {
    if (word.find('.') == word.npos || word.find_first_not_of("-0123456789.") != word.npos)
        return word;
    if (word.size() > kLongestNumber) {
        char text[32];
        std::snprintf(text, sizeof text, "%g", std::strtod(word.c_str(), nullptr));
        return text;
    }
    word.resize(word.find_last_not_of('0') + 1);
    if (word.ends_with('.'))
        word.pop_back();
    return word;
}

} // namespace

std::string TidyValueText(const std::string& archive, const std::string& label) {
    std::string text;
    std::size_t position = archive.find(label) + label.size();
    while ((position = archive.find_first_not_of(" \t\r\n", position)) != archive.npos) {
        const std::size_t end = std::min(archive.find_first_of(" \t\r\n", position), archive.size());
        if (!text.empty())
            text += ' ';
        text += TidyNumber(archive.substr(position, end - position));
        position = end;
    }
    return text;
}

} // namespace Corvid
