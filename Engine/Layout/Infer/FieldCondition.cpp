#include "Engine/Layout/Infer/FieldCondition.h"

#include <algorithm>
#include <utility>

#include "Engine/Layout/Infer/Explanation.h"
#include "Engine/Layout/Infer/Presence.h"

namespace Corvid {

namespace {

constexpr std::size_t kMostAlternatives = 8; // that a mark lists

// Bools, then words of which each stands often, then the nearest: they are in that order already.
void SortBestFirst(std::vector<Explanation>& explanations) {
    const auto rankOf = [](const Explanation& explanation) {
        return std::pair(explanation.m_IsWeak ? 2 : explanation.m_IsBool ? 0 : 1, explanation.m_Around.size());
    };
    std::stable_sort(explanations.begin(), explanations.end(),
                     [&](const Explanation& left, const Explanation& right) { return rankOf(left) < rankOf(right); });
}

// Names that hardly repeat would explain anything.
bool IsOfNames(const Explanation& explanation) {
    return explanation.m_IsWeak && 4 * explanation.m_Words > 3 * explanation.m_Asked;
}

DraftWhen MakeUnknown(const RecordDraft& record, const DraftField& field) {
    const Presence present = PresenceOf(field);
    DraftWhen unknown;
    while (PresenceOf(record.m_Fields[unknown.m_Presence]) != present) // fields that are there together share it
        ++unknown.m_Presence;
    return unknown;
}

// The first of the explanations, in doubt as far as the others go.
DraftWhen MakeWhen(const std::vector<Explanation>& explanations) {
    const Explanation& best = explanations.front();
    DraftWhen when;
    when.m_Condition = best.m_Condition;
    std::copy_n(best.m_Samples, 2, when.m_Samples);
    const bool areListed = explanations.size() <= kMostAlternatives + 1 &&
                           std::none_of(explanations.begin(), explanations.end(), [](const Explanation& rival) {
                               return rival.m_IsWeak || rival.IsThin() || rival.m_IsUncertain;
                           });
    when.m_IsUncertain = !areListed && (explanations.size() > 1 || best.m_IsWeak || best.m_IsUncertain);
    for (std::size_t i = 1; i < explanations.size() && areListed; ++i)
        when.m_Alternatives.push_back(explanations[i].m_Condition);
    return when;
}

// A string on which the condition stands becomes a word; what is known stays what it is.
void MakeWord(const DraftCondition& condition) {
    if (condition.m_Words.empty())
        return;
    DraftField& decider = condition.m_Record->m_Fields[condition.m_Field];
    decider.m_IsWord = decider.m_IsWord || decider.m_Known == kNoLayoutIndex;
}

} // namespace

void FindCondition(RecordDraft& record, std::uint32_t index, const std::vector<Decider>& deciders,
                   std::span<const SampleTree* const> trees) {
    DraftField& field = record.m_Fields[index];
    std::vector<DraftWhen> around = std::exchange(field.m_Whens, {});
    std::vector<Explanation> explanations = around.empty()
                                                ? FindExplanations(record, index, deciders)
                                                : FindExplanationsWithin(around, record, index, deciders, trees);
    SortBestFirst(explanations);
    if (explanations.empty() || IsOfNames(explanations.front())) {
        if (explanations.empty())
            field.m_Whens = std::move(around);
        field.m_Whens.push_back(MakeUnknown(record, field));
        return;
    }
    field.m_Whens = std::move(explanations.front().m_Around);
    field.m_Whens.push_back(MakeWhen(explanations));
    for (const DraftWhen& when : field.m_Whens) {
        MakeWord(when.m_Condition);
        std::for_each(when.m_Alternatives.begin(), when.m_Alternatives.end(), MakeWord);
    }
}

} // namespace Corvid
