#pragma once

#include <span>

#include "Engine/Layout/Infer/KnownLayout.h"
#include "Engine/Layout/Infer/RecordDraft.h"

namespace Corvid {

// Says of every field that is not in all instances of its record when it is there: the earlier values, of its record or
// of one around it, that determine it in every sample. Bools come before words, near ones before far ones. A condition
// is doubtful when there is a rival, or when fewer than two samples show one of its sides. Strings on which conditions
// stand become words. What `known`, if there is one, says without a doubt stays, and what it says with one stays unless
// the samples say more.
void FindConditions(RecordDraft& draft, std::span<const SampleTree* const> trees, const KnownLayout* known);

} // namespace Corvid
