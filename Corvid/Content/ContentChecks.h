#pragma once

#include "Corvid/Diagnostics/DiagnosticLog.h"
#include "Kinds/KindObject.h"

namespace Corvid {

// Adds warnings on what is well-formed and still looks wrong: indices that lead nowhere, names that nobody has. To be
// asked of an object as it was loaded: saving one computes its derived lists anew.
void CheckContent(const KindObject& object, DiagnosticLog& log);

} // namespace Corvid
