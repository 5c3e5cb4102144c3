#pragma once

#include "Corvid/Compare/ComparedList.h"
#include "Corvid/Compare/Difference.h"

namespace Corvid {

// Tells of a list whose elements are told apart by their place how many changed, and how far at most, and how many were
// added or removed.
void SummariseList(const ValueComparison& values, const ComparedList& list, DifferenceSink& sink);

} // namespace Corvid
