#include "Engine/Layout/Infer/KnownConditions.h"

#include <algorithm>

#include "Engine/Layout/Infer/FieldCondition.h"

namespace Corvid {

void KnownConditions::FindFields(RecordDraft& record) {
    for (std::uint32_t index = 0; index < record.m_Fields.size(); ++index) {
        const DraftField& field = record.m_Fields[index];
        if (field.m_Known != kNoLayoutIndex)
            m_Fields[field.m_Known] = {&record, index};
        if (field.m_Inner != nullptr)
            FindFields(*field.m_Inner);
    }
}

// Outermost first, and only those within the record.
std::vector<LayoutIndex> KnownConditions::WhensAround(LayoutIndex field, const RecordDraft& record) const {
    std::vector<LayoutIndex> whens;
    for (LayoutIndex node = m_Layout[field].m_Parent; node != kNoLayoutIndex && node >= record.m_KnownFirst;
         node = m_Layout[node].m_Parent) {
        if (m_Layout[node].m_Kind == LayoutKind::When)
            whens.insert(whens.begin(), node);
    }
    return whens;
}

DraftCondition KnownConditions::Translate(const LayoutCondition& condition) const {
    const auto found = m_Fields.find(condition.m_Field);
    if (found == m_Fields.end())
        return {};
    return {found->second.first, found->second.second, condition.m_Words, condition.m_IsNegated};
}

// What the samples leave standing of a condition that is asked in these instances. Nothing: they say otherwise, or
// nobody knows when.
std::optional<DraftWhen> KnownConditions::TakeOver(const RecordDraft& record, LayoutIndex when,
                                                   const Presence& asked) const {
    if (m_Layout[when].m_IsDoubtful)
        return TakeOverDoubtful(record, when, asked);
    DraftWhen kept;
    kept.m_Condition = Translate(m_Layout[when].m_Condition);
    kept.m_IsKnown = true;
    return kept;
}

std::optional<DraftWhen> KnownConditions::TakeOverDoubtful(const RecordDraft& record, LayoutIndex when,
                                                           const Presence& asked) const {
    const LayoutNode& node = m_Layout[when];
    std::vector<LayoutCondition> readings{node.m_Condition};
    readings.insert(readings.end(), node.m_Doubt.m_Alternatives.begin(), node.m_Doubt.m_Alternatives.end());
    Presence present(record.m_Instances.size(), false); // where a field of those that it holds is there
    for (const DraftField& field : record.m_Fields) {
        for (std::uint32_t i = 0; i < present.size() && field.m_Known > when && field.m_Known < node.m_End; ++i)
            present[i] = present[i] || field.m_Tokens[i] != kNone;
    }
    std::vector<DraftCondition> agreeing;
    for (const LayoutCondition& reading : readings) {
        DraftCondition condition = Translate(reading);
        bool agrees = condition.m_Record != nullptr;
        for (std::uint32_t i = 0; i < present.size() && agrees; ++i)
            agrees = !asked[i] || Holds(condition, record, i, m_Trees) == present[i];
        if (agrees)
            agreeing.push_back(std::move(condition));
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

void KnownConditions::Put(RecordDraft& record, std::uint32_t index, const std::vector<Decider>& deciders) const {
    DraftField& field = record.m_Fields[index];
    Presence asked(record.m_Instances.size(), true);
    for (const LayoutIndex when : WhensAround(field.m_Known, record)) {
        std::optional<DraftWhen> kept = TakeOver(record, when, asked);
        const bool isOpen = !kept.has_value() || kept->m_IsUncertain;
        if (isOpen && field.IsOptional() && field.m_PresentCount > 0) {
            const std::vector<DraftWhen> around = field.m_Whens;
            FindCondition(record, index, deciders, m_Trees);
            if (!kept.has_value())
                return;
            kept->m_IsKnown = field.m_Whens.size() == around.size() + 1 && !field.m_Whens.back().IsDoubtful() &&
                              field.m_Whens.back().m_Condition == kept->m_Condition;
            field.m_Whens = around;
        }
        if (!kept.has_value()) {
            field.m_Whens.emplace_back().m_Presence = kNone - when; // as nothing else has it
            continue;
        }
        Restrict(asked, record, kept->m_Condition, m_Trees);
        field.m_Whens.push_back(std::move(*kept));
    }
}

} // namespace Corvid
