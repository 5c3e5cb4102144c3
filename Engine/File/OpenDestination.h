#pragma once

#include <memory>
#include <string_view>

#include "Engine/File/DestinationTarget.h"

namespace Corvid {

// Chooses the way to write `path` and begins it; null when the path cannot be written.
std::unique_ptr<DestinationTarget> OpenDestination(std::u16string_view path, int patienceMilliseconds);

// The same for a path that bears nothing, not even a link: it is not looked at again. Each look at a name that is not
// there makes runs that fill one folder wait for each other.
std::unique_ptr<DestinationTarget> OpenNewDestination(std::u16string_view path, int patienceMilliseconds);

} // namespace Corvid
