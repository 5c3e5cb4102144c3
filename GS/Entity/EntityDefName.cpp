#include "GS/Entity/EntityDefName.h"

namespace Corvid {

void EntityDefName::Load(Archive& archive, Label label) {
    ReadValue(archive, label, m_Name);
}

void EntityDefName::Save(Archive& archive, Label label) const {
    WriteValue(archive, label, m_Name);
}

} // namespace Corvid
