#pragma once

#include <span>

#include "Engine/Layout/Infer/KnownLayout.h"
#include "Engine/Layout/Infer/RecordDraft.h"

namespace Corvid {

// Finds the counts among the lines of a record: an integer n in front of n equal groups of one to four labels, wherever
// the record stands; or of n groups that share one label and have others only now and then. Their elements' tokens move
// into the count's token. Inner lists are folded before the lists whose elements hold them. The cautious take less for
// part of elements that stand alone. What `known`, if there is one, knows better is left alone.
void FoldLists(std::span<DraftInstance> instances, std::span<const SampleTree* const> trees, const KnownLayout* known,
               bool isCautious);

// Folds the counts of the layout that was given, where their elements stand.
void FoldKnownLists(std::span<DraftInstance> instances, const KnownLayout& known);

} // namespace Corvid
