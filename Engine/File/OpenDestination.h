#pragma once

#include <memory>
#include <string_view>

#include "Engine/File/DestinationTarget.h"

namespace Corvid {

// Chooses the way to write `path` and begins it; null when the path cannot be written.
std::unique_ptr<DestinationTarget> OpenDestination(std::u16string_view path, int patienceMilliseconds);

} // namespace Corvid
