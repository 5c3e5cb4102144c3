#include "Engine/Archive/MeasuringArchive.h"

#include "Engine/Archive/LabelText.h"

namespace Corvid {

void MeasuringArchive::WriteLabeledObject(Label label, const Archivable& object) {
    Add(label, 0);
    object.Save(*this);
}

void MeasuringArchive::Add(Label label, unsigned binaryBytes) {
    m_Size.m_BinaryBytes += binaryBytes;
    m_Size.m_LabelLetters += LabelText::GetLength(label);
}

} // namespace Corvid
