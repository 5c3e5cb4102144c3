#include "Engine/Render/TextureReference.h"

#include "Engine/Archive/ArchiveValues.h"
#include "Engine/Render/TextureSystem.h"

namespace Corvid {

void TextureReference::Return() {
    const Texture* const texture = std::exchange(m_Texture, nullptr);
    if (texture != nullptr && --texture->m_ReferenceCount == 0)
        texture->m_Owner.Destroy(*texture);
}

void ReadValue(Archive& archive, Label label, TextureReference& value) {
    FixedString<TextureReference::kNameCapacity> name(value.GetName());
    ReadValue(archive, label, name);
    value = AcquireTexture(name.GetView());
}

void WriteValue(Archive& archive, Label label, const TextureReference& value) {
    archive.WriteString(label, value.GetName());
}

} // namespace Corvid
