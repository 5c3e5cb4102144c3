#pragma once

namespace Corvid {

// The kind of game object that a definition describes: a row of the table in GS/Entity/EntityTypeTable.h, which also
// gives the types their words.
enum class EntityType : int { Invalid = -1 };

} // namespace Corvid
