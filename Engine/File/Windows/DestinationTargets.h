#pragma once

#include <memory>
#include <string>

#include "Engine/File/DestinationTarget.h"
#include "Engine/File/Windows/Handle.h"

namespace Corvid {

// Writes a temporary in the folder of `path` and moves it over `path`; of an old file it takes attributes and access
// list. Null when the folder takes no temporary.
std::unique_ptr<DestinationTarget> MakeTemporaryTarget(const std::wstring& path, int patienceMilliseconds);

// Keeps all bytes in memory and rewrites the file `destination` at the end, once its space is certain.
std::unique_ptr<DestinationTarget> MakeInPlaceTarget(Handle destination, int patienceMilliseconds);

// Hands the bytes on as they come, to a device or pipe.
std::unique_ptr<DestinationTarget> MakeDirectTarget(Handle destination, int patienceMilliseconds);

} // namespace Corvid
