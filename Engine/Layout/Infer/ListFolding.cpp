#include "Engine/Layout/Infer/ListFolding.h"

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <string_view>

namespace Corvid {

namespace {

constexpr std::size_t kMostLabels = 4;        // of one element
constexpr std::size_t kMostVaryingLabels = 8; // where not each element has all of them
constexpr std::size_t kLeastProofs = 2;       // places with two of those elements or more

class Folder {
public:
    Folder(std::span<DraftInstance> instances, std::span<const SampleTree* const> trees, const KnownLayout* known)
        : m_Instances(instances), m_Trees(trees), m_Known(known) {}

    std::vector<std::string> Run();

private:
    struct Place {
        std::uint32_t m_Instance;
        std::uint32_t m_Token;
        std::int32_t m_Count;
    };
    struct Candidate {
        std::vector<Place> m_Places;
        bool m_IsCount = true; // every value is an integer that a count can be
        std::int32_t m_Most = 0;
        double m_Position = 0.0;
    };
    using Labels = std::vector<std::string_view>;

    const SampleLine& LineOf(const DraftInstance& instance, std::size_t token) const {
        return (*m_Trees[instance.m_Sample])[instance.m_Tokens[token].m_Line];
    }

    // Empty, which is like nothing: a line of which it is known what it is.
    std::string_view LabelOf(const DraftInstance& instance, std::size_t token) const {
        return IsKnown(instance, token) ? std::string_view() : LineOf(instance, token).m_Label;
    }
    bool IsKnown(const DraftInstance& instance, std::size_t token) const;

    std::map<std::string_view, Candidate> FindCandidates() const;
    bool StandsThere(const Place& place, const Labels& labels) const;
    Labels LabelsBehind(const Place& place, std::size_t count) const;
    std::optional<Labels> FindElement(const Candidate& candidate) const;
    std::optional<Labels> FindLoneElement(const Candidate& candidate) const;
    using Sizes = std::vector<std::size_t>; // of the elements of one place
    std::optional<std::vector<Sizes>> FindVaryingElements(const Candidate& candidate) const;
    void Fold(const Candidate& candidate, const std::vector<Sizes>& sizes);
    bool FoldOne(bool isLone, std::vector<std::string>& unproven);

    std::span<DraftInstance> m_Instances;
    std::span<const SampleTree* const> m_Trees;
    const KnownLayout* m_Known;
};

// A count without elements waits for what it counts.
bool Folder::IsKnown(const DraftInstance& instance, std::size_t token) const {
    if (m_Known == nullptr)
        return false;
    const LayoutIndex field = m_Known->FieldAt(instance.m_Sample, instance.m_Tokens[token].m_Line);
    return field != kNoLayoutIndex && m_Known->GetLayout()[field].m_Kind != LayoutKind::Count;
}

std::map<std::string_view, Folder::Candidate> Folder::FindCandidates() const {
    std::map<std::string_view, Candidate> candidates;
    for (std::uint32_t i = 0; i < m_Instances.size(); ++i) {
        const DraftInstance& instance = m_Instances[i];
        for (std::uint32_t token = 0; token < instance.m_Tokens.size(); ++token) {
            const SampleLine& line = LineOf(instance, token);
            Candidate& candidate = candidates[line.m_Label];
            if (!candidate.m_IsCount)
                continue;
            const bool isFolded = instance.m_Tokens[token].m_IsCount || IsKnown(instance, token);
            const std::optional<std::int32_t> number = isFolded ? std::nullopt : ReadIntText(line.m_Value);
            candidate.m_IsCount = number.has_value() && *number >= 0;
            if (!candidate.m_IsCount)
                continue;
            candidate.m_Places.push_back({i, token, *number});
            candidate.m_Most = std::max(candidate.m_Most, *number);
            candidate.m_Position += static_cast<double>(token + 1) / static_cast<double>(instance.m_Tokens.size());
        }
    }
    std::erase_if(candidates, [](const auto& entry) { return !entry.second.m_IsCount || entry.second.m_Most == 0; });
    return candidates;
}

Folder::Labels Folder::LabelsBehind(const Place& place, std::size_t count) const {
    const DraftInstance& instance = m_Instances[place.m_Instance];
    Labels labels;
    for (std::size_t i = 0; i < count && place.m_Token + 1 + i < instance.m_Tokens.size(); ++i)
        labels.push_back(LabelOf(instance, place.m_Token + 1 + i));
    return labels;
}

// Whether as many elements of these labels stand behind the count as it says.
bool Folder::StandsThere(const Place& place, const Labels& labels) const {
    const DraftInstance& instance = m_Instances[place.m_Instance];
    const std::size_t left = instance.m_Tokens.size() - place.m_Token - 1;
    const auto count = static_cast<std::size_t>(place.m_Count);
    if (count > left / labels.size())
        return false;
    for (std::size_t i = 0; i < count * labels.size(); ++i) {
        const std::string_view label = LabelOf(instance, place.m_Token + 1 + i);
        if (label.empty() || label != labels[i % labels.size()])
            return false;
    }
    return true;
}

// The labels of one element, proven by a count of two or more.
std::optional<Folder::Labels> Folder::FindElement(const Candidate& candidate) const {
    const auto several = std::find_if(candidate.m_Places.begin(), candidate.m_Places.end(),
                                      [](const Place& place) { return place.m_Count >= 2; });
    for (std::size_t size = 1; size <= kMostLabels; ++size) {
        const Labels labels = LabelsBehind(*several, size);
        if (labels.size() == size && std::all_of(candidate.m_Places.begin(), candidate.m_Places.end(),
                                                 [&](const Place& place) { return StandsThere(place, labels); }))
            return labels;
    }
    return std::nullopt;
}

// The labels that stand behind every 1 and behind no 0.
std::optional<Folder::Labels> Folder::FindLoneElement(const Candidate& candidate) const {
    const auto one = std::find_if(candidate.m_Places.begin(), candidate.m_Places.end(),
                                  [](const Place& place) { return place.m_Count == 1; });
    Labels element = LabelsBehind(*one, kMostLabels);
    for (const Place& place : candidate.m_Places) {
        const DraftInstance& instance = m_Instances[place.m_Instance];
        for (std::size_t i = 0; i < element.size(); ++i) {
            const std::string_view label = element[i];
            bool fits;
            if (place.m_Count == 1) {
                const std::size_t token = place.m_Token + 1 + i;
                fits = token < instance.m_Tokens.size() && !label.empty() && LabelOf(instance, token) == label;
            } else {
                // Up to the next place of the count, as it may stand in elements itself.
                fits = true;
                for (std::size_t token = place.m_Token + 1;
                     fits && token < instance.m_Tokens.size() &&
                     LineOf(instance, token).m_Label != LineOf(instance, place.m_Token).m_Label;
                     ++token)
                    fits = LineOf(instance, token).m_Label != label;
            }
            if (!fits)
                element.resize(i);
        }
    }
    return element.empty() ? std::nullopt : std::optional(element);
}

// Elements that begin alike, and have some of their further labels only now and then: those that stand between two
// beginnings. By place, nothing if that is not how the lines stand everywhere.
std::optional<std::vector<Folder::Sizes>> Folder::FindVaryingElements(const Candidate& candidate) const {
    std::string_view first;
    std::set<std::string_view> further;
    std::size_t proofs = 0;
    for (const Place& place : candidate.m_Places) {
        const DraftInstance& instance = m_Instances[place.m_Instance];
        std::int32_t begun = 0;
        for (std::size_t token = place.m_Token + 1; begun < place.m_Count; ++token) {
            const std::string_view label = token < instance.m_Tokens.size() ? LabelOf(instance, token) : "";
            if (begun == 0 && first.empty())
                first = label;
            if (label.empty() || (begun == 0 && label != first))
                return std::nullopt;
            if (label == first)
                ++begun;
            else
                further.insert(label);
        }
        proofs += place.m_Count >= 2 ? 1u : 0u;
    }
    if (proofs < kLeastProofs || further.empty() || further.size() >= kMostVaryingLabels)
        return std::nullopt;
    std::vector<Sizes> sizes;
    for (const Place& place : candidate.m_Places) {
        const DraftInstance& instance = m_Instances[place.m_Instance];
        const auto labelAt = [&](std::size_t token) {
            return token < instance.m_Tokens.size() ? LabelOf(instance, token) : std::string_view();
        };
        std::size_t token = place.m_Token + 1;
        Sizes& sizesHere = sizes.emplace_back();
        for (std::int32_t element = 0; element < place.m_Count; ++element) {
            if (labelAt(token) != first)
                return std::nullopt;
            const std::size_t begin = token++;
            std::set<std::string_view> used;
            while (further.contains(labelAt(token)) && used.insert(labelAt(token)).second)
                ++token;
            sizesHere.push_back(token - begin);
        }
        if (labelAt(token) == first || further.contains(labelAt(token)))
            return std::nullopt;
    }
    return sizes;
}

void Folder::Fold(const Candidate& candidate, const std::vector<Sizes>& sizes) {
    for (std::size_t i = candidate.m_Places.size(); i-- > 0;) {
        const Place& place = candidate.m_Places[i];
        std::vector<SampleToken>& tokens = m_Instances[place.m_Instance].m_Tokens;
        SampleToken& count = tokens[place.m_Token];
        count.m_IsCount = true;
        const auto first = tokens.begin() + place.m_Token + 1;
        auto last = first;
        for (const std::size_t size : sizes[i]) {
            const auto begin = last;
            last += static_cast<std::ptrdiff_t>(size);
            count.m_Elements.emplace_back(std::make_move_iterator(begin), std::make_move_iterator(last));
        }
        tokens.erase(first, last);
    }
}

bool Folder::FoldOne(bool isLone, std::vector<std::string>& unproven) {
    const auto candidates = FindCandidates();
    std::vector<std::string_view> order;
    for (const auto& [label, candidate] : candidates) {
        const bool isMixed = std::any_of(candidate.m_Places.begin(), candidate.m_Places.end(),
                                         [](const Place& place) { return place.m_Count == 0; });
        if (isLone ? candidate.m_Most == 1 && isMixed : candidate.m_Most >= 2)
            order.push_back(label);
    }
    // From behind, so that what stands in elements comes first.
    std::stable_sort(order.begin(), order.end(), [&](std::string_view left, std::string_view right) {
        const Candidate& a = candidates.at(left);
        const Candidate& b = candidates.at(right);
        return a.m_Position * static_cast<double>(b.m_Places.size()) >
               b.m_Position * static_cast<double>(a.m_Places.size());
    });
    for (const std::string_view label : order) {
        const Candidate& candidate = candidates.at(label);
        const std::optional<Labels> element = isLone ? FindLoneElement(candidate) : FindElement(candidate);
        if (!element.has_value())
            continue;
        if (isLone)
            unproven.emplace_back(label);
        std::vector<Sizes> sizes;
        for (const Place& place : candidate.m_Places)
            sizes.emplace_back(static_cast<std::size_t>(place.m_Count), element->size());
        Fold(candidate, sizes);
        return true;
    }
    for (std::size_t i = 0; i < order.size() && !isLone; ++i) {
        const Candidate& candidate = candidates.at(order[i]);
        const auto sizes = FindVaryingElements(candidate);
        if (!sizes.has_value())
            continue;
        Fold(candidate, *sizes);
        return true;
    }
    return false;
}

std::vector<std::string> Folder::Run() {
    std::vector<std::string> unproven;
    do {
        while (FoldOne(false, unproven)) {
        }
    } while (FoldOne(true, unproven));
    return unproven;
}

} // namespace

std::vector<std::string> FoldLists(std::span<DraftInstance> instances, std::span<const SampleTree* const> trees,
                                   const KnownLayout* known) {
    return Folder(instances, trees, known).Run();
}

void FoldKnownLists(std::span<DraftInstance> instances, const KnownLayout& known) {
    for (DraftInstance& instance : instances) {
        std::vector<SampleToken> folded;
        for (std::size_t token = 0; token < instance.m_Tokens.size();) {
            SampleToken& count = folded.emplace_back(std::move(instance.m_Tokens[token++]));
            const std::vector<std::uint32_t>* const ends = known.ElementsAt(instance.m_Sample, count.m_Line);
            if (ends == nullptr)
                continue;
            count.m_IsCount = true;
            for (const std::uint32_t end : *ends) {
                std::vector<SampleToken>& element = count.m_Elements.emplace_back();
                while (token < instance.m_Tokens.size() && instance.m_Tokens[token].m_Line < end)
                    element.push_back(std::move(instance.m_Tokens[token++]));
            }
        }
        instance.m_Tokens = std::move(folded);
    }
}

} // namespace Corvid
