#pragma once

#include <string>

#include "Engine/Report/Report.h"

namespace Corvid {

// Appends the exact text of a report as UTF-8, "\n" for each line end. Some texts end without one.
void AppendReportText(std::string& text, const Report& report);

} // namespace Corvid
