#pragma once

#include "Corvid/Diagnostics/DiagnosticLog.h"
#include "Corvid/Values/ValueTree.h"

namespace Corvid {

// Warns of emitters without a name of their own, and of affectors that act on an emitter that is not there.
void CheckParticleContent(const ValueTree& values, DiagnosticLog& log);

} // namespace Corvid
