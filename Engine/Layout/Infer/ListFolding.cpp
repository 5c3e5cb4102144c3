#include "Engine/Layout/Infer/ListFolding.h"

#include <algorithm>
#include <map>
#include <optional>
#include <string_view>

#include "Engine/Layout/Infer/ListElements.h"

namespace Corvid {

namespace {

class Folder {
public:
    Folder(std::span<DraftInstance> instances, std::span<const SampleTree* const> trees, const KnownLayout* known,
           bool isCautious)
        : m_Instances(instances), m_Trees(trees), m_Known(known), m_IsCautious(isCautious) {}

    void Run();

private:
    struct Place {
        std::uint32_t m_Instance;
        std::uint32_t m_Token;
    };
    struct Candidate {
        std::vector<Place> m_Places;
        std::vector<CountPlace> m_Counts; // of the places
        bool m_IsCount = true;            // every value is an integer that a count can be
        std::int32_t m_Most = 0;
        bool m_HasZero = false;
        double m_Position = 0.0;
    };
    using Candidates = std::map<std::string_view, Candidate>;

    const SampleLine& LineOf(const DraftInstance& instance, std::size_t token) const {
        return (*m_Trees[instance.m_Sample])[instance.m_Tokens[token].m_Line];
    }

    // Empty, which is like nothing: a line of which it is known what it is.
    std::string_view LabelOf(const DraftInstance& instance, std::size_t token) const {
        return IsKnown(instance, token) ? std::string_view() : LineOf(instance, token).m_Label;
    }
    bool IsKnown(const DraftInstance& instance, std::size_t token) const;

    Candidates FindCandidates();
    std::vector<std::string_view> OrderOf(const Candidates& candidates, bool areLone) const;
    void Fold(const Candidate& candidate, const std::vector<ElementSizes>& sizes);
    bool FoldProven();
    bool FoldLone();

    std::span<DraftInstance> m_Instances;
    std::span<const SampleTree* const> m_Trees;
    const KnownLayout* m_Known;
    bool m_IsCautious;
    std::vector<std::vector<std::string_view>> m_Labels; // by instance, of its lines
};

// A count without elements waits for what it counts.
bool Folder::IsKnown(const DraftInstance& instance, std::size_t token) const {
    if (m_Known == nullptr)
        return false;
    const LayoutIndex field = m_Known->FieldAt(instance.m_Sample, instance.m_Tokens[token].m_Line);
    return field != kNoLayoutIndex && m_Known->GetLayout()[field].m_Kind != LayoutKind::Count;
}

Folder::Candidates Folder::FindCandidates() {
    Candidates candidates;
    m_Labels.assign(m_Instances.size(), {});
    for (std::uint32_t i = 0; i < m_Instances.size(); ++i) {
        const DraftInstance& instance = m_Instances[i];
        for (std::uint32_t token = 0; token < instance.m_Tokens.size(); ++token) {
            const SampleLine& line = LineOf(instance, token);
            m_Labels[i].push_back(LabelOf(instance, token));
            Candidate& candidate = candidates[line.m_Label];
            if (!candidate.m_IsCount)
                continue;
            const bool isFolded = instance.m_Tokens[token].m_IsCount || IsKnown(instance, token);
            const std::optional<std::int32_t> number = isFolded ? std::nullopt : ReadIntText(line.m_Value);
            candidate.m_IsCount = number.has_value() && *number >= 0;
            if (!candidate.m_IsCount)
                continue;
            candidate.m_Places.push_back({i, token});
            candidate.m_Counts.push_back({instance.m_Sample, *number, {}});
            candidate.m_Most = std::max(candidate.m_Most, *number);
            candidate.m_HasZero = candidate.m_HasZero || *number == 0;
            candidate.m_Position += static_cast<double>(token + 1) / static_cast<double>(instance.m_Tokens.size());
        }
    }
    std::erase_if(candidates, [](const auto& entry) { return !entry.second.m_IsCount || entry.second.m_Most == 0; });
    for (auto& [label, candidate] : candidates) {
        for (std::size_t i = 0; i < candidate.m_Places.size(); ++i) {
            const auto [instance, token] = candidate.m_Places[i];
            const bool isLast = i + 1 == candidate.m_Places.size() || candidate.m_Places[i + 1].m_Instance != instance;
            const std::span<const std::string_view> labels = m_Labels[instance];
            candidate.m_Counts[i].m_Behind =
                labels.first(isLast ? labels.size() : candidate.m_Places[i + 1].m_Token).subspan(token + 1);
        }
    }
    return candidates;
}

void Folder::Fold(const Candidate& candidate, const std::vector<ElementSizes>& sizes) {
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

// From behind, so that what stands in elements comes first.
std::vector<std::string_view> Folder::OrderOf(const Candidates& candidates, bool areLone) const {
    std::vector<std::string_view> order;
    for (const auto& [label, candidate] : candidates) {
        if (areLone ? candidate.m_Most == 1 && candidate.m_HasZero : candidate.m_Most >= 2)
            order.push_back(label);
    }
    std::stable_sort(order.begin(), order.end(), [&](std::string_view left, std::string_view right) {
        const Candidate& a = candidates.at(left);
        const Candidate& b = candidates.at(right);
        return a.m_Position * static_cast<double>(b.m_Places.size()) >
               b.m_Position * static_cast<double>(a.m_Places.size());
    });
    return order;
}

bool Folder::FoldProven() {
    const Candidates candidates = FindCandidates();
    const std::vector<std::string_view> order = OrderOf(candidates, false);
    for (const auto find : {FindEqualElements, FindVaryingElements}) {
        for (const std::string_view label : order) {
            const Candidate& candidate = candidates.at(label);
            if (const auto sizes = find(candidate.m_Counts)) {
                Fold(candidate, *sizes);
                return true;
            }
        }
    }
    return false;
}

bool Folder::FoldLone() {
    const Candidates candidates = FindCandidates();
    std::map<std::string_view, std::vector<ElementSizes>> found;
    std::vector<std::string_view> order = OrderOf(candidates, true);
    std::erase_if(order, [&](std::string_view label) {
        auto sizes = FindLoneElements(candidates.at(label).m_Counts, m_IsCautious);
        if (sizes.has_value())
            found.emplace(label, std::move(*sizes));
        return !sizes.has_value();
    });
    if (order.empty())
        return false;
    // One whose elements hold no other, if there is one.
    const auto holdsAnother = [&](std::string_view label) {
        const std::vector<CountPlace>& places = candidates.at(label).m_Counts;
        for (std::size_t i = 0; i < places.size(); ++i) {
            const auto lines = places[i].m_Behind.first(places[i].m_Count == 0 ? 0 : found.at(label)[i].front());
            if (std::any_of(lines.begin(), lines.end(), [&](std::string_view line) { return found.contains(line); }))
                return true;
        }
        return false;
    };
    const auto innermost = std::find_if_not(order.begin(), order.end(), holdsAnother);
    const std::string_view label = innermost == order.end() ? order.front() : *innermost;
    Fold(candidates.at(label), found.at(label));
    return true;
}

void Folder::Run() {
    do {
        while (FoldProven()) {
        }
    } while (FoldLone());
}

} // namespace

void FoldLists(std::span<DraftInstance> instances, std::span<const SampleTree* const> trees, const KnownLayout* known,
               bool isCautious) {
    Folder(instances, trees, known, isCautious).Run();
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
