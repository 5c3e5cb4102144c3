#pragma once

#include <string>

#include "Corvid/Explain/TextValue.h"

namespace Corvid {

// Why nobody can have meant a value of a binary file, so that the layout it was read by must be wrong; empty: somebody
// can. Only for values that are far off: what is merely odd passes.
std::string ExplainImplausible(const TextValue& value);

} // namespace Corvid
