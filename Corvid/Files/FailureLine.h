#pragma once

#include <string>
#include <string_view>

#include "Corvid/Diagnostics/Diagnostic.h"

namespace Corvid {

// The line for a path that a run cannot do without, as a list of diagnostics would have it:
// "PATH: error: MESSAGE [code]", and its end.
std::string FailureLine(std::string_view path, DiagnosticCode code, std::string_view message);

} // namespace Corvid
