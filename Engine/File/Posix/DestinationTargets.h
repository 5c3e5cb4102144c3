#pragma once

#include <sys/stat.h>

#include <memory>
#include <string>

#include "Engine/File/DestinationTarget.h"
#include "Engine/File/Posix/Descriptor.h"

namespace Corvid {

// Writes a temporary in the folder of `path` and renames it over `path`. `replaced`, open on the old file, gives mode,
// owner and access list; null makes a new file. Null when the folder takes no temporary, or none like the old file.
std::unique_ptr<DestinationTarget> MakeTemporaryTarget(const std::string& path, const Descriptor* replaced,
                                                       int patienceMilliseconds);

// Keeps all bytes in memory and rewrites the regular file `destination` at the end, once its space is certain.
std::unique_ptr<DestinationTarget> MakeInPlaceTarget(Descriptor destination, int patienceMilliseconds);

// Hands the bytes on as they come, to a device, FIFO or socket that may block if `isShared`.
std::unique_ptr<DestinationTarget> MakeDirectTarget(Descriptor destination, bool isShared, int patienceMilliseconds);

} // namespace Corvid
