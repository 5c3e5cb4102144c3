#pragma once

#include <optional>
#include <string>
#include <vector>

namespace Corvid {

// The places of a file in two lists of paths; one of them may be missing.
struct FilePair {
    std::optional<std::size_t> m_Before;
    std::optional<std::size_t> m_After;
};

// Pairs the relative paths of two folders, bytewise in order. The same path belongs together, then paths that differ
// only in the case of the extension.
std::vector<FilePair> PairFiles(const std::vector<std::string>& before, const std::vector<std::string>& after);

} // namespace Corvid
