#pragma once

#include <string>
#include <vector>

#include "Corvid/Values/ValueTree.h"
#include "Engine/Archive/FieldFacts.h"
#include "Kinds/KindObject.h"

namespace Corvid {

// A file that a field names.
struct Reference {
    std::string m_Field; // path
    AssetKind m_Asset = AssetKind::None;
    std::u16string m_Name; // as it stands in the field, never empty
};

// What the fields of an object name, in the order of the file. `values` are those of the object; which fields name what
// comes from its field lists.
std::vector<Reference> FindReferences(const KindObject& object, const ValueTree& values);

// "mesh", "texture", "texture animation", "particle", "definition".
std::string_view NounOf(AssetKind asset);

} // namespace Corvid
