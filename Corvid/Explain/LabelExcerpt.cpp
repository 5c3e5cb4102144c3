#include "Corvid/Explain/LabelExcerpt.h"

#include <algorithm>

#include "Corvid/Explain/TextValue.h"

namespace Corvid {

namespace {

constexpr std::size_t kLongestLabel = 127;

} // namespace

bool IsShownInPaths(std::string_view label) {
    return label.size() <= kLongestLabel && std::all_of(label.begin(), label.end(), [](char c) {
               return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' ||
                      c == ':';
           });
}

std::string ExcerptOfLabel(std::string_view label) {
    return IsShownInPaths(label) ? std::string(label) : Excerpt(label);
}

} // namespace Corvid
