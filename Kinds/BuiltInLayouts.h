#pragma once

#include <optional>

#include "Engine/Layout/Layout.h"
#include "Engine/Layout/LayoutBlocks.h"
#include "GS/Entity/EntityType.h"

namespace Corvid {

// The blocks that entity definitions are made of, by the names of their classes, for layouts to use.
const LayoutBlocks& BuiltInBlocks();

// What stands behind the type word in files of the type, as far as the program knows it: all of it for a settled type,
// for others the blocks that are known to be somewhere in such files. Nothing for a type without a definition.
std::optional<Layout> BuiltInLayout(EntityType type);

} // namespace Corvid
