#pragma once

#include "Corvid/Diagnostics/DiagnosticLog.h"
#include "Corvid/Values/ValueTree.h"

namespace Corvid {

// Warns of brushes without a name of their own.
void CheckBrushesContent(const ValueTree& values, DiagnosticLog& log);

} // namespace Corvid
