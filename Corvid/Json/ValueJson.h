#pragma once

#include <string>

#include "Corvid/Values/ValueTree.h"
#include "Engine/File/ByteSink.h"

namespace Corvid {

enum class JsonLook {
    OneLine,
    Indented, // by two blanks, and ended by a line end
};

// Writes the tree as one JSON value: an object whose members are the labels in order, so that the path of a field in a
// diagnostic is its path here. Elements of a count are arrays under their own labels, the count itself is left out.
// Floats have as many digits as bring them back, NaN and infinities are strings, colours "#aarrggbb".
void WriteJson(const ValueTree& tree, JsonLook look, ByteSink& sink);

// The same as one string.
std::string JsonOf(const ValueTree& tree, JsonLook look);

} // namespace Corvid
