#include "Engine/Layout/Infer/ConditionFinder.h"

#include <algorithm>
#include <optional>

#include "Engine/Layout/Infer/Deciders.h"
#include "Engine/Layout/Infer/FieldCondition.h"
#include "Engine/Layout/Infer/KnownConditions.h"
#include "Engine/Layout/Infer/OrderDoubts.h"

namespace Corvid {

namespace {

// Of fields that are new, the most common first: they stand around the others.
std::vector<std::uint32_t> NewOptionalFields(const RecordDraft& record) {
    std::vector<std::uint32_t> fields;
    for (std::uint32_t index = 0; index < record.m_Fields.size(); ++index) {
        if (record.m_Fields[index].m_Known == kNoLayoutIndex && record.m_Fields[index].IsOptional())
            fields.push_back(index);
    }
    std::stable_sort(fields.begin(), fields.end(), [&](std::uint32_t left, std::uint32_t right) {
        return record.m_Fields[left].m_PresentCount > record.m_Fields[right].m_PresentCount;
    });
    return fields;
}

void FindConditionsIn(RecordDraft& record, std::span<const SampleTree* const> trees,
                      const std::optional<KnownConditions>& known) {
    const auto isKnown = [](const DraftField& field) { return field.m_Known != kNoLayoutIndex; };
    const bool mayHaveAny = std::any_of(record.m_Fields.begin(), record.m_Fields.end(),
                                        [&](const DraftField& field) { return isKnown(field) || field.IsOptional(); });
    if (mayHaveAny) {
        const std::vector<Decider> deciders = FindDeciders(record, trees);
        for (std::uint32_t index = 0; index < record.m_Fields.size(); ++index) {
            if (isKnown(record.m_Fields[index]))
                known->Put(record, index, deciders);
        }
        for (const std::uint32_t index : NewOptionalFields(record))
            FindCondition(record, index, deciders, trees);
        MarkUnordered(record);
    }
    for (DraftField& field : record.m_Fields) {
        if (field.m_Inner != nullptr)
            FindConditionsIn(*field.m_Inner, trees, known);
    }
}

} // namespace

void FindConditions(RecordDraft& draft, std::span<const SampleTree* const> trees, const KnownLayout* known) {
    std::optional<KnownConditions> knownConditions;
    if (known != nullptr)
        knownConditions.emplace(draft, known->GetLayout(), trees);
    FindConditionsIn(draft, trees, knownConditions);
}

} // namespace Corvid
