#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "Engine/Archive/Archive.h"

namespace Corvid {

class TextureSystem;

// A texture by its name, shared by all references to it. Its texture system owns it.
struct Texture {
    std::u16string m_Name; // exactly as acquired, never empty
    TextureSystem& m_Owner;
    mutable std::int32_t m_ReferenceCount = 0;
};

// A counted reference to a texture, or none: returned to the texture system exactly once, by Return() or when it is
// destroyed. A copy is a reference of its own. Returned, all of them, before the texture system is destroyed.
class TextureReference {
public:
    // UTF-16 units of a texture's name in a file, terminator included.
    static constexpr int kNameCapacity = 260;

    TextureReference() = default;
    explicit TextureReference(const Texture& texture) : m_Texture(&texture) { ++texture.m_ReferenceCount; }
    TextureReference(const TextureReference& other) : m_Texture(other.m_Texture) {
        if (m_Texture != nullptr)
            ++m_Texture->m_ReferenceCount;
    }
    TextureReference(TextureReference&& other) noexcept : m_Texture(std::exchange(other.m_Texture, nullptr)) {}
    TextureReference& operator=(TextureReference other) noexcept {
        std::swap(m_Texture, other.m_Texture);
        return *this;
    }
    ~TextureReference() { Return(); }

    void Return();

    const char16_t* GetName() const { return m_Texture != nullptr ? m_Texture->m_Name.c_str() : u""; }

    // By name, so no texture equals an empty name.
    friend bool operator==(const TextureReference& a, const TextureReference& b) {
        return a.m_Texture == b.m_Texture || std::u16string_view(a.GetName()) == b.GetName();
    }

private:
    const Texture* m_Texture = nullptr;
};

// Archived as the texture's name; loading acquires from the thread's current texture system.
void ReadValue(Archive& archive, Label label, TextureReference& value);
void WriteValue(Archive& archive, Label label, const TextureReference& value);

} // namespace Corvid
