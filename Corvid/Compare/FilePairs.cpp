#include "Corvid/Compare/FilePairs.h"

#include <algorithm>
#include <map>

namespace Corvid {

namespace {

std::string WithLowerExtension(std::string path) {
    const std::size_t dot = path.find_last_of("./");
    for (std::size_t i = dot == path.npos ? path.size() : dot; i < path.size(); ++i)
        path[i] = path[i] >= 'A' && path[i] <= 'Z' ? static_cast<char>(path[i] - 'A' + 'a') : path[i];
    return path;
}

} // namespace

std::vector<FilePair> PairFiles(const std::vector<std::string>& before, const std::vector<std::string>& after) {
    std::vector<FilePair> pairs;
    std::multimap<std::string, std::size_t> exact; // places in `pairs` of what has no partner yet
    for (std::size_t i = 0; i < before.size(); ++i) {
        exact.emplace(before[i], pairs.size());
        pairs.push_back({i, std::nullopt});
    }
    std::vector<std::size_t> unpaired;
    for (std::size_t i = 0; i < after.size(); ++i) {
        const auto found = exact.find(after[i]);
        if (found == exact.end()) {
            unpaired.push_back(i);
            continue;
        }
        pairs[found->second].m_After = i;
        exact.erase(found);
    }
    std::multimap<std::string, std::size_t> byExtension;
    for (const auto& [path, place] : exact)
        byExtension.emplace(WithLowerExtension(path), place);
    for (const std::size_t i : unpaired) {
        const auto found = byExtension.find(WithLowerExtension(after[i]));
        if (found == byExtension.end()) {
            pairs.push_back({std::nullopt, i});
            continue;
        }
        pairs[found->second].m_After = i;
        byExtension.erase(found);
    }
    std::ranges::stable_sort(pairs, {}, [&](const FilePair& pair) -> const std::string& {
        return pair.m_After ? after[*pair.m_After] : before[*pair.m_Before];
    });
    return pairs;
}

} // namespace Corvid
