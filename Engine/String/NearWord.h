#pragma once

#include <optional>
#include <span>
#include <string_view>

namespace Corvid {

// Whether `written` may be a slip of the pen for `meant`: case aside, an edit distance of at most 2 and of at most a
// third of the written length, rounded up. Of two texts that differ in case only, the distance is 0. A singular is
// near to its plural ("NumVertex", "NumVertices").
bool IsNearWord(std::string_view written, std::string_view meant);

// The edit distance, case aside, if it is at most 2.
std::optional<int> SmallEditDistance(std::string_view a, std::string_view b);

// The nearest of the words that are near, the first of several; empty: none is.
std::string_view NearestWord(std::string_view written, std::span<const std::string_view> words);

} // namespace Corvid
