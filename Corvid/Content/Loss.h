#pragma once

#include <string>

#include "Corvid/Load/LoadedFile.h"

namespace Corvid {

// Notes what does not come back of a file without errors: what loading itself drops or computes anew, and what the text
// encoding does not hold of a binary file. By field, with a count and the largest difference.
void NoteLoss(const std::string& bytes, std::u16string_view path, const LoadedFile& file, LoadOptions options,
              DiagnosticLog& log);

} // namespace Corvid
