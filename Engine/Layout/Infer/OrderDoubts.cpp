#include "Engine/Layout/Infer/OrderDoubts.h"

#include <algorithm>

#include "Engine/Layout/Infer/FieldOrder.h"

namespace Corvid {

namespace {

bool ExcludeEachOther(const DraftCondition& left, const DraftCondition& right) {
    if (left.m_Record != right.m_Record || left.m_Field != right.m_Field)
        return false;
    if (left.m_Words.empty())
        return left.m_IsNegated != right.m_IsNegated;
    return std::none_of(left.m_Words.begin(), left.m_Words.end(), [&](const std::u16string& word) {
        return std::find(right.m_Words.begin(), right.m_Words.end(), word) != right.m_Words.end();
    });
}

bool ExcludeEachOther(const DraftField& left, const DraftField& right) {
    for (const DraftWhen& ofLeft : left.m_Whens) {
        for (const DraftWhen& ofRight : right.m_Whens) {
            if (ExcludeEachOther(ofLeft.m_Condition, ofRight.m_Condition))
                return true;
        }
    }
    return false;
}

// A text shows the order itself, and from binary what nobody knows about is refused anyway.
bool IsUnknown(const DraftField& field) {
    return std::any_of(field.m_Whens.begin(), field.m_Whens.end(),
                       [](const DraftWhen& when) { return when.IsUnknown(); });
}

} // namespace

void MarkUnordered(RecordDraft& record) {
    for (const auto& [first, second] : FindUnorderedFields(record)) {
        DraftField& left = record.m_Fields[first];
        DraftField& right = record.m_Fields[second];
        if (IsUnknown(left) || IsUnknown(right) || ExcludeEachOther(left, right))
            continue;
        for (DraftField* field : {&left, &right}) {
            if (field->m_Whens.empty() || field->m_Whens.back().m_IsKnown)
                continue;
            field->m_Whens.back().m_IsUncertain = true;
            field->m_Whens.back().m_Alternatives.clear();
        }
    }
}

} // namespace Corvid
