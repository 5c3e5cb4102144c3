#include "Engine/Layout/Infer/Presence.h"

#include <algorithm>
#include <string>

namespace Corvid {

Presence PresenceOf(const DraftField& field) {
    Presence presence(field.m_Tokens.size());
    for (std::size_t i = 0; i < presence.size(); ++i)
        presence[i] = field.m_Tokens[i] != kNone;
    return presence;
}

void Restrict(Presence& instances, const RecordDraft& record, const DraftCondition& condition,
              std::span<const SampleTree* const> trees) {
    for (std::uint32_t i = 0; i < instances.size(); ++i)
        instances[i] = instances[i] && Holds(condition, record, i, trees);
}

bool Holds(const DraftCondition& condition, const RecordDraft& record, std::uint32_t instance,
           std::span<const SampleTree* const> trees) {
    const RecordDraft* holder = &record;
    while (holder != condition.m_Record && holder != nullptr) {
        instance = holder->m_Instances[instance].m_Parent;
        holder = holder->m_Outer;
    }
    if (holder == nullptr)
        return condition.m_IsNegated;
    const DraftField& decider = holder->m_Fields[condition.m_Field];
    if (decider.m_Tokens[instance] == kNone)
        return condition.m_IsNegated;
    const std::string_view value = ValueOf(decider, *holder, instance, trees);
    if (condition.m_Words.empty())
        return (value == "TRUE") != condition.m_IsNegated;
    const std::u16string word = ReadStringText(value);
    return (std::find(condition.m_Words.begin(), condition.m_Words.end(), word) != condition.m_Words.end()) !=
           condition.m_IsNegated;
}

std::string_view ValueOf(const DraftField& field, const RecordDraft& record, std::uint32_t instance,
                         std::span<const SampleTree* const> trees) {
    const DraftInstance& holder = record.m_Instances[instance];
    return (*trees[holder.m_Sample])[holder.m_Tokens[field.m_Tokens[instance]].m_Line].m_Value;
}

} // namespace Corvid
