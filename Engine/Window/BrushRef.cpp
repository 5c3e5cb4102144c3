#include "Engine/Window/BrushRef.h"

namespace Corvid {

void BrushRef::Load(Archive& archive, Label label) {
    ReadValue(archive, label, m_Name);
}

void BrushRef::Save(Archive& archive, Label label) const {
    WriteValue(archive, label, m_Name);
}

} // namespace Corvid
