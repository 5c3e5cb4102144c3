#include "Corvid/Explain/NearText.h"

#include <algorithm>
#include <numeric>
#include <vector>

namespace Corvid {

namespace {

constexpr std::size_t kMostEdits = 2;
constexpr std::size_t kLongest = 127; // no label is longer, and no word that people type

char LowerCase(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

std::size_t EditDistance(std::string_view a, std::string_view b) {
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < a.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i + 1;
        for (std::size_t j = 0; j < b.size(); ++j) {
            const std::size_t replaced = diagonal + (LowerCase(a[i]) != LowerCase(b[j]) ? 1 : 0);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, row[j] + 1, diagonal + 1});
        }
    }
    return row[b.size()];
}

// More than kMostEdits where the lengths alone tell.
std::size_t NearDistance(std::string_view written, std::string_view wanted) {
    const std::size_t longer = std::max(written.size(), wanted.size());
    if (longer > kLongest || longer - std::min(written.size(), wanted.size()) > kMostEdits)
        return kMostEdits + 1;
    return EditDistance(written, wanted);
}

} // namespace

bool IsNear(std::string_view written, std::string_view wanted) {
    return written != wanted && !written.empty() &&
           NearDistance(written, wanted) <= std::min(kMostEdits, (written.size() + 2) / 3);
}

void NearestText::Offer(std::string_view candidate) {
    if (!IsNear(m_Written, candidate))
        return;
    const std::size_t distance = NearDistance(m_Written, candidate);
    if (m_Nearest.empty() || distance < m_Distance) {
        m_Nearest = candidate;
        m_Distance = distance;
    }
}

} // namespace Corvid
