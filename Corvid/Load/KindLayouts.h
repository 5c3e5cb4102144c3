#pragma once

#include <memory>
#include <string_view>

#include "Engine/Layout/Layout.h"
#include "GS/Entity/EntityType.h"
#include "Kinds/Kind.h"

namespace Corvid {

// The layout of a whole file of the kind, out of its field lists; of an entity, the type word alone. Made once.
const Layout& LayoutOfKind(Kind kind);

// Of an entity file of a type that has a definition: the type word and the fields of the type.
Layout LayoutOfEntityType(EntityType type);

} // namespace Corvid
