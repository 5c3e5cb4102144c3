#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "Engine/Layout/Infer/Deciders.h"
#include "Engine/Layout/Infer/RecordDraft.h"

namespace Corvid {

// Says of one field that is not in all instances of the record when it is there, within the conditions that it has
// already. Where nothing explains it, that nobody knows is one more condition.
void FindCondition(RecordDraft& record, std::uint32_t field, const std::vector<Decider>& deciders,
                   std::span<const SampleTree* const> trees);

} // namespace Corvid
