#pragma once

#include "Corvid/Json/Json.h"
#include "Corvid/Values/ValueTree.h"

namespace Corvid {

// The tree as one JSON value: an object whose members are the labels in order, so that the path of a field in a
// diagnostic is its path here. Elements of a count are arrays under their own labels, the count itself is left out.
// Floats have as many digits as bring them back, NaN and infinities are strings, colours "#aarrggbb".
Json JsonOf(const ValueTree& tree);

} // namespace Corvid
