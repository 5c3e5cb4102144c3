#include "Engine/String/NearWord.h"

#include <algorithm>
#include <vector>

namespace Corvid {

namespace {

constexpr int kMostEdits = 2;

char Lower(char character) {
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
}

} // namespace

std::optional<int> SmallEditDistance(std::string_view a, std::string_view b) {
    const auto lengthDifference = static_cast<std::ptrdiff_t>(a.size()) - static_cast<std::ptrdiff_t>(b.size());
    if (lengthDifference > kMostEdits || lengthDifference < -kMostEdits)
        return std::nullopt;
    // Row by row of the table of distances between beginnings, the cells about the diagonal only.
    constexpr int kFar = kMostEdits + 1;
    std::vector<int> above(b.size() + 1, kFar);
    std::vector<int> row(b.size() + 1, kFar);
    for (std::size_t j = 0; j <= std::min<std::size_t>(b.size(), kMostEdits); ++j)
        above[j] = static_cast<int>(j);
    for (std::size_t i = 1; i <= a.size(); ++i) {
        std::fill(row.begin(), row.end(), kFar);
        const std::size_t first = i > kMostEdits ? i - kMostEdits : 0;
        for (std::size_t j = first; j <= std::min(b.size(), i + kMostEdits); ++j) {
            if (j == 0) {
                row[0] = static_cast<int>(i);
                continue;
            }
            const int changed = above[j - 1] + (Lower(a[i - 1]) != Lower(b[j - 1]) ? 1 : 0);
            row[j] = std::min({changed, above[j] + 1, row[j - 1] + 1, kFar});
        }
        std::swap(row, above);
    }
    return above[b.size()] <= kMostEdits ? std::optional(above[b.size()]) : std::nullopt;
}

// "Vertex" and "Vertices" are further apart than two letters.
static bool IsSingularOf(std::string_view written, std::string_view meant) {
    constexpr std::string_view kPlural = "ices";
    if (written.size() < 3 || !meant.ends_with(kPlural) || !(written.ends_with("ex") || written.ends_with("ix")))
        return false;
    return SmallEditDistance(written.substr(0, written.size() - 2), meant.substr(0, meant.size() - kPlural.size())) ==
           0;
}

bool IsNearWord(std::string_view written, std::string_view meant) {
    if (IsSingularOf(written, meant))
        return true;
    const std::optional<int> distance = SmallEditDistance(written, meant);
    return distance && static_cast<std::size_t>(*distance) <= (written.size() + 2) / 3;
}

std::string_view NearestWord(std::string_view written, std::span<const std::string_view> words) {
    std::string_view nearest;
    int least = kMostEdits + 1;
    for (const std::string_view word : words) {
        if (!IsNearWord(written, word))
            continue;
        const int distance = SmallEditDistance(written, word).value_or(kMostEdits);
        if (distance < least) {
            least = distance;
            nearest = word;
        }
    }
    return nearest;
}

} // namespace Corvid
