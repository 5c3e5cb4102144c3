#pragma once

#include "Corvid/Compare/CompareOptions.h"
#include "Corvid/Compare/Difference.h"
#include "Corvid/Values/ValueTree.h"

namespace Corvid {

// Tells every difference between two trees of one kind of file, in the order of the file.
void CompareTrees(const ValueTree& before, const ValueTree& after, const CompareOptions& options, DifferenceSink& sink);

} // namespace Corvid
