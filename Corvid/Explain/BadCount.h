#pragma once

#include <cstdint>
#include <string>

#include "Engine/Layout/Layout.h"

namespace Corvid {

// Why a list cannot have so many elements, where the rest of the file has room for `fitting` smallest ones; empty: it
// can, as far as the count tells.
std::string ExplainBadCount(const LayoutNode& list, std::int64_t count, std::uint64_t fitting);

} // namespace Corvid
