#pragma once

#include <memory>
#include <optional>
#include <span>

#include "Engine/Layout/Infer/KnownLayout.h"
#include "Engine/Layout/Infer/RecordDraft.h"
#include "Engine/Layout/Infer/SampleConflict.h"

namespace Corvid {

// Puts all text samples of one type over each other: fields, lists and nested records, and what their values allow.
// Nothing is said of conditions yet. The first line of each, the word of the type, is no field. A conflict when no
// layout can describe all samples.
// `known`, which has read the samples, is what is known of them before; null: nothing. The cautious leave out of a list
// whose elements stand alone what may stand behind it.
std::optional<SampleConflict> BuildDraft(std::span<const SampleTree* const> trees, const KnownLayout* known,
                                         bool isCautious, RecordDraft& draft);

// Settles decimals that nothing but floats can have been written from, where bytes have not told.
void SettleDecimals(RecordDraft& draft);

} // namespace Corvid
