#pragma once

#include "Corvid/Diagnostics/DiagnosticLog.h"
#include "Corvid/Values/ValueTree.h"

namespace Corvid {

// Warns of each field that holds a NaN or an infinity.
void CheckFiniteValues(const ValueTree& values, DiagnosticLog& log);

void AddNotFinite(DiagnosticLog& log, std::string field, double value);

} // namespace Corvid
