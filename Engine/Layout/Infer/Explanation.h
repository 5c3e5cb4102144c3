#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "Engine/Layout/Infer/Deciders.h"
#include "Engine/Layout/Infer/RecordDraft.h"

namespace Corvid {

// A condition that agrees with where a field is, in every instance in which it is asked.
struct Explanation {
    DraftCondition m_Condition;
    std::vector<DraftWhen> m_Around; // the conditions that hold wherever it is asked
    bool m_IsBool = false;
    std::size_t m_Words = 0;             // different ones that were seen
    bool m_IsWeak = false;               // most of its words stand once only
    std::size_t m_Asked = 0;             // values that it stands on
    std::uint32_t m_Samples[2] = {0, 0}; // without the field, and with it; up to two
    bool m_IsUncertain = false;

    bool IsThin() const { return m_Samples[0] < 2 || m_Samples[1] < 2; }
};

// All conditions on deciders of the record that explain when the field is there: each alone; within the conditions of
// other fields, too, unless chance is ruled out by then; and two at once where nothing else explains it.
std::vector<Explanation> FindExplanations(const RecordDraft& record, std::uint32_t field,
                                          const std::vector<Decider>& deciders);

// The same where it is certain that the field stands within the conditions `around`.
std::vector<Explanation> FindExplanationsWithin(const std::vector<DraftWhen>& around, const RecordDraft& record,
                                                std::uint32_t field, const std::vector<Decider>& deciders,
                                                std::span<const SampleTree* const> trees);

} // namespace Corvid
