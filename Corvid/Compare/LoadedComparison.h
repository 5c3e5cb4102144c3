#pragma once

#include <future>
#include <string>

#include "Corvid/Compare/CompareOptions.h"
#include "Corvid/Compare/Difference.h"
#include "Corvid/Load/LoadedFile.h"

namespace Corvid {

// Tells every difference between what could be read of two files. Whether colours have 8 bits per channel comes from
// the files. Empty, or why the two cannot be compared: they are of different kinds, or of none. Nothing is told of a
// file without an object. `launch`: how the work on one of them goes beside that on the other.
std::string CompareLoaded(const LoadedFile& before, const LoadedFile& after, CompareOptions options, std::launch launch,
                          DifferenceSink& sink);

} // namespace Corvid
