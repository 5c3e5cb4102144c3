#include "Engine/Layout/Infer/ConditionFinder.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <set>
#include <string_view>

#include "Engine/Layout/Infer/FieldOrder.h"

namespace Corvid {

namespace {

constexpr std::size_t kMostWords = 64;       // that an enumeration has
constexpr std::size_t kManyWords = 12;       // of which most stand once only: names, no enumeration
constexpr std::size_t kMostAlternatives = 8; // that a mark lists
constexpr double kCertainBitsOfTwo = 20.0;
constexpr double kCertainBits = 14.0; // of chance against it: a single condition is no accident

using Presence = std::vector<bool>; // by instance

// An earlier value that a condition can stand on, seen from the instances of one record.
struct Candidate {
    RecordDraft* m_Record;
    std::uint32_t m_Field;
    bool m_IsBool;
    std::vector<std::int32_t> m_Values; // 0 and 1, or the index of the word; -1: not there
    std::vector<std::uint32_t> m_Owner; // the instance of m_Record that each is seen from
};

struct Explanation {
    DraftCondition m_Condition;
    std::vector<DraftWhen> m_Around; // the conditions that hold wherever it is asked
    bool m_IsBool = false;
    std::size_t m_Words = 0;
    bool m_IsWeak = false;               // most of its words stand once only
    std::size_t m_Asked = 0;             // values that it stands on
    std::uint32_t m_Samples[2] = {0, 0}; // without the field, and with it
    bool m_IsUncertain = false;

    bool IsThin() const { return m_Samples[0] < 2 || m_Samples[1] < 2; }
};

bool IsIdentifier(std::u16string_view word) {
    const auto isLetter = [](char16_t unit) {
        return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z') || unit == u'_';
    };
    return !word.empty() && isLetter(word.front()) && std::all_of(word.begin(), word.end(), [&](char16_t unit) {
        return isLetter(unit) || (unit >= u'0' && unit <= u'9');
    });
}

bool CanDecide(const DraftField& field) {
    if (field.m_Shape != DraftShape::Value)
        return false;
    if (field.m_Kinds.Has(LayoutKind::Bool))
        return field.m_WasSeen[0] && field.m_WasSeen[1];
    return field.m_Kinds.Has(LayoutKind::String) && field.m_Words.size() >= 2 && field.m_Words.size() <= kMostWords &&
           std::all_of(field.m_Words.begin(), field.m_Words.end(), IsIdentifier);
}

// How unlikely it is that a value agrees by chance with a field that stands in `present` of `all` instances.
double BitsOfChance(std::size_t present, std::size_t all) {
    const auto choices = [](std::size_t n) { return std::lgamma(static_cast<double>(n) + 1.0); };
    return (choices(all) - choices(present) - choices(all - present)) / std::log(2.0);
}

Presence PresenceOf(const DraftField& field) {
    Presence presence(field.m_Tokens.size());
    for (std::size_t i = 0; i < presence.size(); ++i)
        presence[i] = field.m_Tokens[i] != kNone;
    return presence;
}

class Finder {
public:
    Finder(std::span<const SampleTree* const> trees, const KnownLayout* known) : m_Trees(trees), m_Known(known) {}

    void FindKnownFields(RecordDraft& record);
    void Visit(RecordDraft& record);

private:
    std::vector<Candidate> FindCandidates(RecordDraft& record) const;
    std::vector<const Candidate*> VisibleTo(const RecordDraft& record, std::uint32_t field,
                                            const std::vector<Candidate>& candidates) const;
    bool Explain(const Candidate& candidate, const RecordDraft& record, const Presence& asked, const Presence& present,
                 Explanation& explanation) const;
    void Explain(RecordDraft& record, std::uint32_t field, const std::vector<Candidate>& candidates);
    void ExplainKnown(RecordDraft& record, std::uint32_t field, const std::vector<Candidate>& candidates);
    std::optional<DraftWhen> KeepKnown(const RecordDraft& record, LayoutIndex when, const Presence& asked) const;
    DraftCondition Translate(const LayoutCondition& condition) const;
    std::optional<bool> Holds(const DraftCondition& condition, const RecordDraft& record, std::uint32_t instance) const;
    std::vector<Explanation> ExplainByTwo(const RecordDraft& record, const Presence& present,
                                          const std::vector<const Candidate*>& candidates) const;
    static void Decide(RecordDraft& record, std::uint32_t index, std::vector<Explanation> explanations);

    std::span<const SampleTree* const> m_Trees;
    const KnownLayout* m_Known;
    std::map<LayoutIndex, std::pair<RecordDraft*, std::uint32_t>> m_KnownFields;
};

std::vector<Candidate> Finder::FindCandidates(RecordDraft& record) const {
    std::vector<Candidate> candidates;
    std::vector<std::uint32_t> instanceOf(record.m_Instances.size()); // of the record that is looked into
    for (std::uint32_t i = 0; i < instanceOf.size(); ++i)
        instanceOf[i] = i;
    auto end = static_cast<std::uint32_t>(record.m_Fields.size());
    for (RecordDraft* around = &record; around != nullptr; around = around->m_Outer) {
        for (std::uint32_t index = end; index-- > 0;) {
            const DraftField& field = around->m_Fields[index];
            if (!CanDecide(field))
                continue;
            Candidate& candidate = candidates.emplace_back();
            candidate.m_Record = around;
            candidate.m_Field = index;
            candidate.m_IsBool = field.m_Kinds.Has(LayoutKind::Bool);
            candidate.m_Owner = instanceOf;
            for (const std::uint32_t i : instanceOf) {
                if (field.m_Tokens[i] == kNone) {
                    candidate.m_Values.push_back(-1);
                    continue;
                }
                const DraftInstance& instance = around->m_Instances[i];
                const std::string_view value =
                    (*m_Trees[instance.m_Sample])[instance.m_Tokens[field.m_Tokens[i]].m_Line].m_Value;
                if (candidate.m_IsBool) {
                    candidate.m_Values.push_back(value == "TRUE" ? 1 : 0);
                } else {
                    const auto word =
                        std::lower_bound(field.m_Words.begin(), field.m_Words.end(), ReadStringText(value));
                    candidate.m_Values.push_back(static_cast<std::int32_t>(word - field.m_Words.begin()));
                }
            }
        }
        for (std::uint32_t& i : instanceOf)
            i = around->m_Instances[i].m_Parent;
        end = around->m_OuterField;
    }
    return candidates;
}

// A label means the nearest earlier value that has it.
std::vector<const Candidate*> Finder::VisibleTo(const RecordDraft& record, std::uint32_t field,
                                                const std::vector<Candidate>& candidates) const {
    std::vector<const Candidate*> visible;
    std::set<std::string_view> nearer;
    std::uint32_t end = field;
    for (const RecordDraft* around = &record; around != nullptr; around = around->m_Outer) {
        for (std::uint32_t index = end; index-- > 0;) {
            const DraftField& earlier = around->m_Fields[index];
            if (earlier.m_Shape == DraftShape::Record || !nearer.insert(earlier.m_Label).second)
                continue;
            const auto found = std::find_if(candidates.begin(), candidates.end(), [&](const Candidate& candidate) {
                return candidate.m_Record == around && candidate.m_Field == index;
            });
            if (found != candidates.end())
                visible.push_back(&*found);
        }
        end = around->m_OuterField;
        if (around->m_Outer != nullptr && around->m_Outer->m_Fields[end].m_Shape == DraftShape::List)
            nearer.insert(around->m_Outer->m_Fields[end].m_Label);
    }
    return visible;
}

bool Finder::Explain(const Candidate& candidate, const RecordDraft& record, const Presence& asked,
                     const Presence& present, Explanation& explanation) const {
    const DraftField& field = candidate.m_Record->m_Fields[candidate.m_Field];
    std::vector<std::int8_t> sides(candidate.m_IsBool ? 2 : field.m_Words.size(), -1);
    std::size_t askedCount = 0;
    std::vector<bool> isCounted(candidate.m_Record->m_Instances.size(), false); // one value decides for many elements
    std::set<std::uint32_t> samples[2];
    for (std::size_t i = 0; i < asked.size(); ++i) {
        if (!asked[i])
            continue;
        if (candidate.m_Values[i] < 0)
            return false;
        askedCount += isCounted[candidate.m_Owner[i]] ? 0u : 1u;
        isCounted[candidate.m_Owner[i]] = true;
        std::int8_t& side = sides[static_cast<std::size_t>(candidate.m_Values[i])];
        const std::int8_t here = present[i] ? 1 : 0;
        if (side != -1 && side != here)
            return false;
        side = here;
        if (samples[here].size() < 2)
            samples[here].insert(record.m_Instances[i].m_Sample);
    }
    explanation.m_Condition = {candidate.m_Record, candidate.m_Field, {}, false};
    explanation.m_IsBool = candidate.m_IsBool;
    explanation.m_Asked = askedCount;
    for (const int side : {0, 1})
        explanation.m_Samples[side] = static_cast<std::uint32_t>(samples[side].size());
    if (candidate.m_IsBool) {
        explanation.m_Condition.m_IsNegated = sides[0] == 1;
        return true;
    }
    for (std::size_t word = 0; word < sides.size(); ++word) {
        explanation.m_Words += sides[word] != -1 ? 1u : 0u;
        if (sides[word] == 1)
            explanation.m_Condition.m_Words.push_back(field.m_Words[word]);
    }
    explanation.m_IsWeak = 2 * explanation.m_Words > askedCount;
    // Names that differ everywhere agree with anything.
    return !(explanation.m_IsWeak && explanation.m_Words > kManyWords);
}

// One condition within another, where no single one will do. Two explain so much that they are certain only if they
// are the only two, and far from chance.
std::vector<Explanation> Finder::ExplainByTwo(const RecordDraft& record, const Presence& present,
                                              const std::vector<const Candidate*>& candidates) const {
    std::vector<Explanation> explanations;
    std::set<std::pair<const Candidate*, const Candidate*>> pairs;
    for (const Candidate* first : candidates) {
        if (std::find(first->m_Values.begin(), first->m_Values.end(), -1) != first->m_Values.end())
            continue;
        const DraftField& field = first->m_Record->m_Fields[first->m_Field];
        std::vector<bool> isSide(first->m_IsBool ? 2 : field.m_Words.size(), false);
        for (std::size_t i = 0; i < present.size(); ++i) {
            if (present[i])
                isSide[static_cast<std::size_t>(first->m_Values[i])] = true;
        }
        Presence asked(present.size());
        for (std::size_t i = 0; i < asked.size(); ++i)
            asked[i] = isSide[static_cast<std::size_t>(first->m_Values[i])];
        if (asked == present || std::all_of(asked.begin(), asked.end(), [](bool isAsked) { return isAsked; }))
            continue;
        for (const Candidate* second : candidates) {
            Explanation explanation;
            if (second == first || !Explain(*second, record, asked, present, explanation) || explanation.m_IsWeak ||
                !pairs.insert(std::minmax(first, second)).second)
                continue;
            DraftWhen around;
            around.m_Condition = {first->m_Record, first->m_Field, {}, false};
            std::copy_n(explanation.m_Samples, 2, around.m_Samples);
            if (first->m_IsBool) {
                around.m_Condition.m_IsNegated = isSide[0];
            } else {
                for (std::size_t word = 0; word < isSide.size(); ++word) {
                    if (isSide[word])
                        around.m_Condition.m_Words.push_back(field.m_Words[word]);
                }
            }
            explanation.m_Around.push_back(std::move(around));
            explanations.push_back(std::move(explanation));
        }
    }
    if (explanations.empty())
        return explanations;
    const auto presentCount = static_cast<std::size_t>(std::count(present.begin(), present.end(), true));
    explanations.front().m_IsUncertain =
        explanations.size() > 1 || BitsOfChance(presentCount, present.size()) < kCertainBitsOfTwo;
    explanations.resize(1);
    Explanation& only = explanations.front();
    only.m_Around.front().m_IsUncertain = only.m_IsUncertain;
    return explanations;
}

void Finder::Explain(RecordDraft& record, std::uint32_t index, const std::vector<Candidate>& candidates) {
    DraftField& field = record.m_Fields[index];
    const Presence present = PresenceOf(field);
    const std::vector<const Candidate*> visible = VisibleTo(record, index, candidates);

    std::vector<Explanation> explanations;
    const std::vector<DraftWhen> knownAround = std::move(field.m_Whens);
    field.m_Whens.clear();
    const auto explainWithin = [&](const Presence& asked, const std::vector<DraftWhen>& around) {
        for (const Candidate* candidate : visible) {
            Explanation explanation;
            if (!Explain(*candidate, record, asked, present, explanation))
                continue;
            const bool isKnown = std::any_of(explanations.begin(), explanations.end(), [&](const Explanation& earlier) {
                return earlier.m_Condition.m_Record == explanation.m_Condition.m_Record &&
                       earlier.m_Condition.m_Field == explanation.m_Condition.m_Field;
            });
            if (isKnown)
                continue;
            explanation.m_Around = around;
            explanations.push_back(std::move(explanation));
        }
    };
    if (!knownAround.empty()) {
        Presence asked(present.size(), true);
        for (std::uint32_t i = 0; i < asked.size(); ++i) {
            for (const DraftWhen& when : knownAround)
                asked[i] = asked[i] && Holds(when.m_Condition, record, i).value_or(when.m_Condition.m_IsNegated);
        }
        explainWithin(asked, knownAround);
        if (explanations.empty())
            field.m_Whens = knownAround;
        return Decide(record, index, std::move(explanations));
    }
    explainWithin(Presence(present.size(), true), {});

    // Within the conditions of earlier fields, unless a single one is too good to be chance.
    if (explanations.empty() || BitsOfChance(field.m_PresentCount, present.size()) < kCertainBits) {
        std::vector<Presence> asked;
        for (const DraftField& around : record.m_Fields) {
            if (&around == &field || !around.IsOptional() || around.m_Whens.empty() ||
                around.m_PresentCount <= field.m_PresentCount ||
                std::any_of(around.m_Whens.begin(), around.m_Whens.end(),
                            [](const DraftWhen& when) { return when.IsUnknown(); }))
                continue;
            Presence presence = PresenceOf(around);
            bool isWithin = true;
            for (std::size_t i = 0; i < presence.size() && isWithin; ++i)
                isWithin = presence[i] || !present[i];
            if (!isWithin || std::find(asked.begin(), asked.end(), presence) != asked.end())
                continue;
            explainWithin(presence, around.m_Whens);
            asked.push_back(std::move(presence));
        }
    }
    if (explanations.empty())
        explanations = ExplainByTwo(record, present, visible);
    Decide(record, index, std::move(explanations));
}

void Finder::Decide(RecordDraft& record, std::uint32_t index, std::vector<Explanation> explanations) {
    DraftField& field = record.m_Fields[index];
    // Bools, then words of which each stands often, then the nearest: they are in that order already.
    const auto rankOf = [](const Explanation& explanation) {
        return std::pair(explanation.m_IsWeak ? 2 : explanation.m_IsBool ? 0 : 1, explanation.m_Around.size());
    };
    std::stable_sort(explanations.begin(), explanations.end(),
                     [&](const Explanation& left, const Explanation& right) { return rankOf(left) < rankOf(right); });
    // Names that hardly repeat would explain anything.
    if (explanations.empty() ||
        (explanations[0].m_IsWeak && 4 * explanations[0].m_Words > 3 * explanations[0].m_Asked)) {
        std::uint32_t alike = 0; // fields that are there together share it
        while (PresenceOf(record.m_Fields[alike]) != PresenceOf(field))
            ++alike;
        field.m_Whens.emplace_back().m_Presence = alike;
        return;
    }
    Explanation& best = explanations.front();
    DraftWhen when;
    when.m_Condition = best.m_Condition;
    std::copy_n(best.m_Samples, 2, when.m_Samples);
    const bool isListed = explanations.size() <= kMostAlternatives + 1 &&
                          std::none_of(explanations.begin(), explanations.end(), [](const Explanation& rival) {
                              return rival.m_IsWeak || rival.IsThin() || rival.m_IsUncertain;
                          });
    when.m_IsUncertain = !isListed && (explanations.size() > 1 || best.m_IsWeak || best.m_IsUncertain);
    for (std::size_t i = 1; i < explanations.size() && isListed; ++i)
        when.m_Alternatives.push_back(explanations[i].m_Condition);
    const auto becomeWord = [](const DraftCondition& condition) {
        DraftField& decider = condition.m_Record->m_Fields[condition.m_Field];
        if (!condition.m_Words.empty() && decider.m_Known == kNoLayoutIndex)
            decider.m_IsWord = true;
    };
    becomeWord(when.m_Condition);
    std::for_each(when.m_Alternatives.begin(), when.m_Alternatives.end(), becomeWord);
    for (const DraftWhen& around : best.m_Around)
        becomeWord(around.m_Condition);
    field.m_Whens = std::move(best.m_Around);
    field.m_Whens.push_back(std::move(when));
}

bool ExcludeEachOther(const DraftField& left, const DraftField& right) {
    for (const DraftWhen& a : left.m_Whens) {
        for (const DraftWhen& b : right.m_Whens) {
            if (a.IsUnknown() || a.m_Condition.m_Record != b.m_Condition.m_Record ||
                a.m_Condition.m_Field != b.m_Condition.m_Field)
                continue;
            if (a.m_Condition.m_Words.empty() && a.m_Condition.m_IsNegated != b.m_Condition.m_IsNegated)
                return true;
            const auto isIn = [&](const std::u16string& word) {
                return std::find(b.m_Condition.m_Words.begin(), b.m_Condition.m_Words.end(), word) !=
                       b.m_Condition.m_Words.end();
            };
            if (!a.m_Condition.m_Words.empty() &&
                std::none_of(a.m_Condition.m_Words.begin(), a.m_Condition.m_Words.end(), isIn))
                return true;
        }
    }
    return false;
}

// Where nothing shows which of two fields comes first, a file that has both cannot be trusted.
void MarkUnordered(RecordDraft& record) {
    for (const auto& [first, second] : FindUnorderedFields(record)) {
        DraftField& left = record.m_Fields[first];
        DraftField& right = record.m_Fields[second];
        // A text shows the order itself, and from binary what nobody knows about is refused anyway.
        const auto isUnknown = [](const DraftField& field) {
            return std::any_of(field.m_Whens.begin(), field.m_Whens.end(),
                               [](const DraftWhen& when) { return when.IsUnknown(); });
        };
        if (isUnknown(left) || isUnknown(right) || ExcludeEachOther(left, right))
            continue;
        for (DraftField* field : {&left, &right}) {
            if (field->m_Whens.empty() || field->m_Whens.back().m_IsKnown)
                continue;
            field->m_Whens.back().m_IsUncertain = true;
            field->m_Whens.back().m_Alternatives.clear();
        }
    }
}

void Finder::FindKnownFields(RecordDraft& record) {
    for (std::uint32_t index = 0; index < record.m_Fields.size(); ++index) {
        const DraftField& field = record.m_Fields[index];
        if (field.m_Known != kNoLayoutIndex)
            m_KnownFields[field.m_Known] = {&record, index};
        if (field.m_Inner != nullptr)
            FindKnownFields(*field.m_Inner);
    }
}

DraftCondition Finder::Translate(const LayoutCondition& condition) const {
    const auto found = m_KnownFields.find(condition.m_Field);
    if (found == m_KnownFields.end())
        return {};
    return {found->second.first, found->second.second, condition.m_Words, condition.m_IsNegated};
}

// Nothing where the value that decides is not there.
std::optional<bool> Finder::Holds(const DraftCondition& condition, const RecordDraft& record,
                                  std::uint32_t instance) const {
    const RecordDraft* around = &record;
    while (around != condition.m_Record && around != nullptr) {
        instance = around->m_Instances[instance].m_Parent;
        around = around->m_Outer;
    }
    if (around == nullptr)
        return std::nullopt;
    const DraftField& decider = around->m_Fields[condition.m_Field];
    if (decider.m_Tokens[instance] == kNone)
        return std::nullopt;
    const DraftInstance& holder = around->m_Instances[instance];
    const std::string_view value =
        (*m_Trees[holder.m_Sample])[holder.m_Tokens[decider.m_Tokens[instance]].m_Line].m_Value;
    if (condition.m_Words.empty())
        return (value == "TRUE") != condition.m_IsNegated;
    const std::u16string word = ReadStringText(value);
    return (std::find(condition.m_Words.begin(), condition.m_Words.end(), word) != condition.m_Words.end()) !=
           condition.m_IsNegated;
}

// A condition in doubt, as far as the samples leave it standing. Nothing: they say otherwise, or nobody knows when.
std::optional<DraftWhen> Finder::KeepKnown(const RecordDraft& record, LayoutIndex when, const Presence& asked) const {
    const LayoutNode& node = m_Known->GetLayout()[when];
    std::vector<LayoutCondition> readings{node.m_Condition};
    readings.insert(readings.end(), node.m_Doubt.m_Alternatives.begin(), node.m_Doubt.m_Alternatives.end());
    Presence present(record.m_Instances.size(), false);
    for (const DraftField& field : record.m_Fields) {
        for (std::uint32_t i = 0; i < present.size() && field.m_Known > when && field.m_Known < node.m_End; ++i)
            present[i] = present[i] || field.m_Tokens[i] != kNone;
    }
    std::vector<DraftCondition> agreeing;
    for (const LayoutCondition& reading : readings) {
        const DraftCondition condition = Translate(reading);
        bool agrees = condition.m_Record != nullptr;
        for (std::uint32_t i = 0; i < present.size() && agrees; ++i)
            agrees = !asked[i] || Holds(condition, record, i).value_or(condition.m_IsNegated) == present[i];
        if (agrees)
            agreeing.push_back(condition);
    }
    if (agreeing.empty())
        return std::nullopt;
    DraftWhen kept;
    kept.m_Condition = agreeing.front();
    kept.m_IsKnown = agreeing.size() == 1 && readings.size() > 1; // of several, the only one that is left
    kept.m_IsUncertain = readings.size() == 1;
    kept.m_Samples[0] = kept.m_Samples[1] = 2;
    kept.m_Alternatives.assign(agreeing.begin() + 1, agreeing.end());
    return kept;
}

// The conditions around a field in the known layout, outermost first.
void Finder::ExplainKnown(RecordDraft& record, std::uint32_t index, const std::vector<Candidate>& candidates) {
    const Layout& layout = m_Known->GetLayout();
    DraftField& field = record.m_Fields[index];
    std::vector<LayoutIndex> whens;
    for (LayoutIndex node = layout[field.m_Known].m_Parent; node != kNoLayoutIndex && node + 1 > record.m_KnownFirst;
         node = layout[node].m_Parent) {
        if (layout[node].m_Kind == LayoutKind::When)
            whens.insert(whens.begin(), node);
    }
    Presence asked(record.m_Instances.size(), true);
    for (const LayoutIndex when : whens) {
        std::optional<DraftWhen> kept;
        if (layout[when].m_IsDoubtful) {
            kept = KeepKnown(record, when, asked);
        } else {
            kept.emplace().m_Condition = Translate(layout[when].m_Condition);
            kept->m_IsKnown = true;
        }
        const bool isOpen = !kept.has_value() || kept->m_IsUncertain;
        if (isOpen && field.IsOptional() && field.m_PresentCount > 0) {
            const std::vector<DraftWhen> around = field.m_Whens;
            Explain(record, index, candidates);
            if (!kept.has_value())
                return;
            const bool isProven = !field.m_Whens.back().IsDoubtful() &&
                                  field.m_Whens.back().m_Condition == kept->m_Condition &&
                                  field.m_Whens.size() == around.size() + 1;
            field.m_Whens = around;
            kept->m_IsKnown = isProven;
        }
        if (!kept.has_value()) {
            field.m_Whens.emplace_back().m_Presence = kNone - when; // as nothing else has it
            continue;
        }
        for (std::uint32_t i = 0; i < asked.size(); ++i)
            asked[i] = asked[i] && Holds(kept->m_Condition, record, i).value_or(kept->m_Condition.m_IsNegated);
        field.m_Whens.push_back(std::move(*kept));
    }
}

void Finder::Visit(RecordDraft& record) {
    const bool hasOptional = std::any_of(record.m_Fields.begin(), record.m_Fields.end(), [](const DraftField& field) {
        return field.IsOptional() || field.m_Known != kNoLayoutIndex;
    });
    if (hasOptional) {
        const std::vector<Candidate> candidates = FindCandidates(record);
        // The most common first: they stand around the others.
        std::vector<std::uint32_t> optional;
        for (std::uint32_t index = 0; index < record.m_Fields.size(); ++index) {
            if (record.m_Fields[index].m_Known != kNoLayoutIndex)
                ExplainKnown(record, index, candidates);
            else if (record.m_Fields[index].IsOptional())
                optional.push_back(index);
        }
        std::stable_sort(optional.begin(), optional.end(), [&](std::uint32_t left, std::uint32_t right) {
            return record.m_Fields[left].m_PresentCount > record.m_Fields[right].m_PresentCount;
        });
        for (const std::uint32_t index : optional)
            Explain(record, index, candidates);
        MarkUnordered(record);
    }
    for (DraftField& field : record.m_Fields) {
        if (field.m_Inner != nullptr)
            Visit(*field.m_Inner);
    }
}

} // namespace

void FindConditions(RecordDraft& draft, std::span<const SampleTree* const> trees, const KnownLayout* known) {
    Finder finder(trees, known);
    if (known != nullptr)
        finder.FindKnownFields(draft);
    finder.Visit(draft);
}

} // namespace Corvid
