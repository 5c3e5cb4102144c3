#include "Engine/Layout/Infer/ListElements.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <set>

namespace Corvid {

namespace {

constexpr std::size_t kMostLabels = 4;         // of elements that are all alike
constexpr std::size_t kMostVaryingLabels = 32; // of elements that are not
constexpr std::size_t kLeastProofs = 2;        // places with two of those elements or more
constexpr double kCertainBits = 8.0;           // of chance against a line that stands behind no 0 by accident

using Labels = std::set<std::string_view>;

std::size_t CountOf(const CountPlace& place) {
    return static_cast<std::size_t>(place.m_Count);
}

// Whether as many groups of these labels stand behind the count as it says.
bool StandsThere(const CountPlace& place, std::span<const std::string_view> labels) {
    if (CountOf(place) > place.m_Behind.size() / labels.size())
        return false;
    for (std::size_t i = 0; i < CountOf(place) * labels.size(); ++i) {
        if (place.m_Behind[i].empty() || place.m_Behind[i] != labels[i % labels.size()])
            return false;
    }
    return true;
}

// What stands in front of the shared label in an element, and what behind it.
struct VaryingLabels {
    std::string_view m_Shared;
    Labels m_Leading;
    Labels m_Trailing;
};

// Takes the labels from one place. False where its elements cannot be told apart by the shared label.
bool AddLabels(const CountPlace& place, VaryingLabels& labels) {
    std::size_t begun = 0;
    for (std::size_t i = 0; begun < CountOf(place); ++i) {
        if (i == place.m_Behind.size() || place.m_Behind[i].empty())
            return false;
        if (place.m_Behind[i] == labels.m_Shared)
            ++begun;
        else if (begun == 0)
            labels.m_Leading.insert(place.m_Behind[i]);
    }
    begun = 0;
    for (std::size_t i = 0; begun < CountOf(place); ++i) {
        if (place.m_Behind[i] == labels.m_Shared)
            ++begun;
        else if (begun > 0 && !labels.m_Leading.contains(place.m_Behind[i]))
            labels.m_Trailing.insert(place.m_Behind[i]);
    }
    return labels.m_Leading.size() + labels.m_Trailing.size() < kMostVaryingLabels;
}

// Leading labels, the shared one, trailing ones, each once at the most.
std::size_t SizeOfElement(std::span<const std::string_view> lines, const VaryingLabels& labels) {
    std::size_t size = 0;
    Labels used;
    while (size < lines.size() && labels.m_Leading.contains(lines[size]) && used.insert(lines[size]).second)
        ++size;
    if (size == lines.size() || lines[size] != labels.m_Shared)
        return 0;
    ++size;
    while (size < lines.size() && labels.m_Trailing.contains(lines[size]) && used.insert(lines[size]).second)
        ++size;
    return size;
}

std::optional<std::vector<ElementSizes>> SplitAt(std::span<const CountPlace> places, std::string_view shared) {
    VaryingLabels labels{shared, {}, {}};
    for (const CountPlace& place : places) {
        if (!AddLabels(place, labels))
            return std::nullopt;
    }
    std::vector<ElementSizes> sizes;
    for (const CountPlace& place : places) {
        std::span<const std::string_view> lines = place.m_Behind;
        for (ElementSizes& here = sizes.emplace_back(); here.size() < CountOf(place);) {
            here.push_back(SizeOfElement(lines, labels));
            if (here.back() == 0)
                return std::nullopt;
            lines = lines.subspan(here.back());
        }
        const auto isPart = [&](std::string_view label) {
            return label == shared || labels.m_Leading.contains(label) || labels.m_Trailing.contains(label);
        };
        if (std::any_of(lines.begin(), lines.end(), isPart))
            return std::nullopt;
    }
    return sizes;
}

// How unlikely it is that a line which stands in `present` of the samples with a 1 stands in none of those with a 0 by
// accident.
double BitsOfChance(std::size_t present, std::size_t ones, std::size_t zeros) {
    const auto logOfChoices = [](std::size_t all, std::size_t some) {
        const auto factorial = [](std::size_t n) { return std::lgamma(static_cast<double>(n) + 1.0); };
        return factorial(all) - factorial(some) - factorial(all - some);
    };
    return (logOfChoices(ones + zeros, present) - logOfChoices(ones, present)) / std::log(2.0);
}

} // namespace

std::optional<std::vector<ElementSizes>> FindEqualElements(std::span<const CountPlace> places) {
    const auto several =
        std::find_if(places.begin(), places.end(), [](const CountPlace& place) { return place.m_Count >= 2; });
    for (std::size_t size = 1; size <= std::min(kMostLabels, several->m_Behind.size()); ++size) {
        const auto labels = several->m_Behind.first(size);
        if (!std::all_of(places.begin(), places.end(),
                         [&](const CountPlace& place) { return StandsThere(place, labels); }))
            continue;
        std::vector<ElementSizes> sizes;
        for (const CountPlace& place : places)
            sizes.emplace_back(CountOf(place), size);
        return sizes;
    }
    return std::nullopt;
}

std::optional<std::vector<ElementSizes>> FindVaryingElements(std::span<const CountPlace> places) {
    const auto hasSeveral = [](const CountPlace& place) { return place.m_Count >= 2; };
    if (static_cast<std::size_t>(std::count_if(places.begin(), places.end(), hasSeveral)) < kLeastProofs)
        return std::nullopt;
    const CountPlace& several = *std::find_if(places.begin(), places.end(), hasSeveral);
    Labels tried;
    for (const std::string_view label : several.m_Behind) {
        if (label.empty() || tried.size() == kMostVaryingLabels)
            break;
        if (!tried.insert(label).second || std::count(several.m_Behind.begin(), several.m_Behind.end(), label) !=
                                               static_cast<std::ptrdiff_t>(several.m_Count))
            continue;
        if (auto sizes = SplitAt(places, label))
            return sizes;
    }
    return std::nullopt;
}

std::optional<std::vector<ElementSizes>> FindLoneElements(std::span<const CountPlace> places, bool isCautious) {
    Labels behindZero;
    std::set<std::uint32_t> samples[2];
    for (const CountPlace& place : places) {
        samples[place.m_Count].insert(place.m_Sample);
        if (place.m_Count == 0)
            behindZero.insert(place.m_Behind.begin(), place.m_Behind.end());
    }
    // What goes on behind a 1 up to something that stands behind a 0, too.
    std::vector<std::span<const std::string_view>> elements;
    std::map<std::string_view, std::set<std::uint32_t>> samplesWith;
    std::map<std::string_view, std::size_t> elementsWith;
    std::size_t ones = 0;
    for (const CountPlace& place : places) {
        Labels used;
        while (place.m_Count == 1 && used.size() < std::min(place.m_Behind.size(), kMostVaryingLabels)) {
            const std::string_view label = place.m_Behind[used.size()];
            if (label.empty() || behindZero.contains(label) || !used.insert(label).second)
                break;
            samplesWith[label].insert(place.m_Sample);
            ++elementsWith[label];
        }
        elements.push_back(place.m_Behind.first(used.size()));
        ones += CountOf(place);
    }
    const auto isAlwaysThere = [&](std::string_view label) { return elementsWith[label] == ones; };
    Labels outside;
    for (std::size_t i = 0; i < elements.size() && isCautious; ++i) {
        const auto& element = elements[i];
        const auto last = std::find_if(element.rbegin(), element.rend(), isAlwaysThere).base();
        for (auto label = last; label != element.end(); ++label) {
            if (BitsOfChance(samplesWith[*label].size(), samples[1].size(), samples[0].size()) < kCertainBits)
                outside.insert(*label);
        }
    }
    bool isEmpty = true;
    std::vector<ElementSizes> sizes;
    for (std::size_t i = 0; i < places.size(); ++i) {
        const auto end = std::find_if(elements[i].begin(), elements[i].end(),
                                      [&](std::string_view label) { return outside.contains(label); });
        sizes.emplace_back(CountOf(places[i]), static_cast<std::size_t>(end - elements[i].begin()));
        isEmpty = isEmpty && end == elements[i].begin();
    }
    return isEmpty ? std::nullopt : std::optional(sizes);
}

} // namespace Corvid
