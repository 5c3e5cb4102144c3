#pragma once

#include <sys/stat.h>

#include "Corvid/Files/FileStatus.h"

namespace Corvid {

FileStatus StatusFromSystem(const struct stat& found);

} // namespace Corvid
