#include "Engine/Layout/Infer/Explanation.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <set>
#include <utility>

#include "Engine/Layout/Infer/Presence.h"

namespace Corvid {

namespace {

constexpr std::size_t kManyWords = 12; // of which most stand once only: names, no enumeration

// Of chance against it: one condition, or two at once, are no accident.
constexpr double kCertainBits = 14.0;
constexpr double kCertainBitsOfTwo = 20.0;

// How unlikely it is that a value agrees by chance with a field that stands in `present` of `all` instances.
double BitsOfChance(std::size_t present, std::size_t all) {
    const auto choices = [](std::size_t n) { return std::lgamma(static_cast<double>(n) + 1.0); };
    return (choices(all) - choices(present) - choices(all - present)) / std::log(2.0);
}

bool IsAll(const Presence& instances) {
    return std::find(instances.begin(), instances.end(), false) == instances.end();
}

bool IsWithin(const Presence& inner, const Presence& outer) {
    for (std::size_t i = 0; i < inner.size(); ++i) {
        if (inner[i] && !outer[i])
            return false;
    }
    return true;
}

// The condition that holds for these values of the decider.
DraftCondition ConditionOn(const Decider& decider, const std::vector<bool>& holdsFor) {
    DraftCondition condition{decider.m_Record, decider.m_Field, {}, false};
    if (decider.m_IsBool) {
        condition.m_IsNegated = holdsFor[0];
        return condition;
    }
    for (std::size_t word = 0; word < holdsFor.size(); ++word) {
        if (holdsFor[word])
            condition.m_Words.push_back(decider.GetField().m_Words[word]);
    }
    return condition;
}

// How the values of a decider go with where a field is.
struct Agreement {
    std::vector<bool> m_IsSeen;                       // by value
    std::vector<bool> m_IsWith;                       // by value: the field is there
    std::size_t m_ValueCount = 0;                     // in the samples
    std::array<std::set<std::uint32_t>, 2> m_Samples; // without the field, and with it; two suffice
};

// Nothing where one value goes with both, or where there is no value.
std::optional<Agreement> FindAgreement(const Decider& decider, const RecordDraft& record, const Presence& asked,
                                       const Presence& present) {
    Agreement agreement;
    agreement.m_IsSeen.resize(decider.CountPossibleValues());
    agreement.m_IsWith.resize(decider.CountPossibleValues());
    std::vector<bool> isCounted(decider.m_Record->m_Instances.size(), false); // one value decides for many elements
    for (std::size_t i = 0; i < asked.size(); ++i) {
        if (!asked[i])
            continue;
        if (decider.m_Values[i] == Decider::kAbsent)
            return std::nullopt;
        agreement.m_ValueCount += isCounted[decider.m_Owners[i]] ? 0u : 1u;
        isCounted[decider.m_Owners[i]] = true;
        const auto value = static_cast<std::size_t>(decider.m_Values[i]);
        if (agreement.m_IsSeen[value] && agreement.m_IsWith[value] != present[i])
            return std::nullopt;
        agreement.m_IsSeen[value] = true;
        agreement.m_IsWith[value] = present[i];
        std::set<std::uint32_t>& samples = agreement.m_Samples[present[i] ? 1 : 0];
        if (samples.size() < 2)
            samples.insert(record.m_Instances[i].m_Sample);
    }
    return agreement;
}

// Nothing where it explains nothing, or would explain anything.
std::optional<Explanation> ExplainBy(const Decider& decider, const RecordDraft& record, const Presence& asked,
                                     const Presence& present) {
    const std::optional<Agreement> agreement = FindAgreement(decider, record, asked, present);
    if (!agreement.has_value())
        return std::nullopt;
    Explanation explanation;
    explanation.m_Condition = ConditionOn(decider, agreement->m_IsWith);
    explanation.m_IsBool = decider.m_IsBool;
    explanation.m_Asked = agreement->m_ValueCount;
    for (const std::size_t side : {0u, 1u})
        explanation.m_Samples[side] = static_cast<std::uint32_t>(agreement->m_Samples[side].size());
    if (decider.m_IsBool)
        return explanation;
    explanation.m_Words =
        static_cast<std::size_t>(std::count(agreement->m_IsSeen.begin(), agreement->m_IsSeen.end(), true));
    explanation.m_IsWeak = 2 * explanation.m_Words > explanation.m_Asked;
    if (explanation.m_IsWeak && explanation.m_Words > kManyWords)
        return std::nullopt; // names that differ everywhere
    return explanation;
}

// Gathers what explains one field.
class Explainer {
public:
    Explainer(const RecordDraft& record, std::uint32_t field, const std::vector<Decider>& deciders)
        : m_Record(record),
          m_Field(record.m_Fields[field]),
          m_Deciders(VisibleTo(record, field, deciders)),
          m_Present(PresenceOf(m_Field)) {}

    // Single conditions, asked only in these instances, where the conditions `around` hold.
    void TryWithin(const Presence& asked, const std::vector<DraftWhen>& around);
    void TryWithinOtherFields();
    void TryTwoAtOnce();

    // Whether there is a single condition that is too good to be chance.
    bool IsCertain() const {
        return !m_Explanations.empty() && BitsOfChance(m_Field.m_PresentCount, m_Present.size()) >= kCertainBits;
    }
    bool HasNone() const { return m_Explanations.empty(); }
    std::vector<Explanation> Take() { return std::move(m_Explanations); }

private:
    bool IsLessCommonThan(const DraftField& other) const;
    std::optional<DraftWhen> FindOuter(const Decider& decider, Presence& asked) const;

    const RecordDraft& m_Record;
    const DraftField& m_Field;
    std::vector<const Decider*> m_Deciders; // that the field can name
    Presence m_Present;
    std::vector<Explanation> m_Explanations;
};

void Explainer::TryWithin(const Presence& asked, const std::vector<DraftWhen>& around) {
    for (const Decider* decider : m_Deciders) {
        std::optional<Explanation> explanation = ExplainBy(*decider, m_Record, asked, m_Present);
        if (!explanation.has_value())
            continue;
        const bool isKnown = std::any_of(m_Explanations.begin(), m_Explanations.end(), [&](const Explanation& earlier) {
            return earlier.m_Condition.m_Record == decider->m_Record && earlier.m_Condition.m_Field == decider->m_Field;
        });
        if (isKnown)
            continue;
        explanation->m_Around = around;
        m_Explanations.push_back(std::move(*explanation));
    }
}

// Whether it may stand within the conditions of the other, as long as these are known.
bool Explainer::IsLessCommonThan(const DraftField& other) const {
    return &other != &m_Field && other.IsOptional() && !other.m_Whens.empty() &&
           other.m_PresentCount > m_Field.m_PresentCount &&
           std::none_of(other.m_Whens.begin(), other.m_Whens.end(),
                        [](const DraftWhen& when) { return when.IsUnknown(); });
}

void Explainer::TryWithinOtherFields() {
    std::vector<Presence> tried;
    for (const DraftField& other : m_Record.m_Fields) {
        if (!IsLessCommonThan(other))
            continue;
        Presence asked = PresenceOf(other);
        if (!IsWithin(m_Present, asked) || std::find(tried.begin(), tried.end(), asked) != tried.end())
            continue;
        TryWithin(asked, other.m_Whens);
        tried.push_back(std::move(asked));
    }
}

// The condition that holds for all values that the decider has where the field is; `asked`: the instances in which it
// does. Nothing where it says nothing, or explains the field by itself.
std::optional<DraftWhen> Explainer::FindOuter(const Decider& decider, Presence& asked) const {
    if (std::find(decider.m_Values.begin(), decider.m_Values.end(), Decider::kAbsent) != decider.m_Values.end())
        return std::nullopt;
    std::vector<bool> holdsFor(decider.CountPossibleValues(), false);
    for (std::size_t i = 0; i < m_Present.size(); ++i) {
        if (m_Present[i])
            holdsFor[static_cast<std::size_t>(decider.m_Values[i])] = true;
    }
    asked.assign(m_Present.size(), false);
    for (std::size_t i = 0; i < asked.size(); ++i)
        asked[i] = holdsFor[static_cast<std::size_t>(decider.m_Values[i])];
    if (asked == m_Present || IsAll(asked))
        return std::nullopt;
    DraftWhen outer;
    outer.m_Condition = ConditionOn(decider, holdsFor);
    return outer;
}

// One condition within another. Two explain so much that they are certain only if they are the only two, and far from
// chance.
void Explainer::TryTwoAtOnce() {
    std::set<std::pair<const Decider*, const Decider*>> pairs; // whichever stands around the other
    for (const Decider* first : m_Deciders) {
        Presence asked;
        const std::optional<DraftWhen> outer = FindOuter(*first, asked);
        if (!outer.has_value())
            continue;
        for (const Decider* second : m_Deciders) {
            if (second == first)
                continue;
            std::optional<Explanation> explanation = ExplainBy(*second, m_Record, asked, m_Present);
            if (!explanation.has_value() || explanation->m_IsWeak || !pairs.insert(std::minmax(first, second)).second)
                continue;
            explanation->m_Around.push_back(*outer);
            std::copy_n(explanation->m_Samples, 2, explanation->m_Around.back().m_Samples);
            m_Explanations.push_back(std::move(*explanation));
        }
    }
    if (m_Explanations.empty())
        return;
    const bool isUncertain =
        m_Explanations.size() > 1 || BitsOfChance(m_Field.m_PresentCount, m_Present.size()) < kCertainBitsOfTwo;
    m_Explanations.resize(1);
    m_Explanations.front().m_IsUncertain = isUncertain;
    m_Explanations.front().m_Around.front().m_IsUncertain = isUncertain;
}

} // namespace

std::vector<Explanation> FindExplanations(const RecordDraft& record, std::uint32_t field,
                                          const std::vector<Decider>& deciders) {
    Explainer explainer(record, field, deciders);
    explainer.TryWithin(Presence(record.m_Instances.size(), true), {});
    if (!explainer.IsCertain())
        explainer.TryWithinOtherFields();
    if (explainer.HasNone())
        explainer.TryTwoAtOnce();
    return explainer.Take();
}

std::vector<Explanation> FindExplanationsWithin(const std::vector<DraftWhen>& around, const RecordDraft& record,
                                                std::uint32_t field, const std::vector<Decider>& deciders,
                                                std::span<const SampleTree* const> trees) {
    Presence asked(record.m_Instances.size(), true);
    for (const DraftWhen& when : around)
        Restrict(asked, record, when.m_Condition, trees);
    Explainer explainer(record, field, deciders);
    explainer.TryWithin(asked, around);
    return explainer.Take();
}

} // namespace Corvid
