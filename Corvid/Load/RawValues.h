#pragma once

#include <optional>
#include <string>

#include "Corvid/Load/LoadedFile.h"
#include "Corvid/Values/ValueTree.h"

namespace Corvid {

// The values as they stand in the file, those that loading drops among them. Nothing where no layout is at hand.
std::optional<ValueTree> ReadRawValues(const std::string& bytes, const LoadedFile& file);

} // namespace Corvid
