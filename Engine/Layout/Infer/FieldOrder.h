#pragma once

#include <optional>
#include <span>

#include "Engine/Layout/Infer/KnownLayout.h"
#include "Engine/Layout/Infer/RecordDraft.h"
#include "Engine/Layout/Infer/SampleConflict.h"

namespace Corvid {

// Lines up the instances of a record, whose lists are folded: makes its fields, in the one order that all instances
// keep. A label that stands several times in a record is as many fields. A conflict when two instances contradict each
// other. Fields of `known`, if there is one, are all there, in its order.
std::optional<SampleConflict> OrderFields(RecordDraft& record, std::span<const SampleTree* const> trees,
                                          const KnownLayout* known);

// Pairs of fields, the first in front of the second, that never stand together, and whose order nothing shows.
std::vector<std::pair<std::uint32_t, std::uint32_t>> FindUnorderedFields(const RecordDraft& record);

} // namespace Corvid
