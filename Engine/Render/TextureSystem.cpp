#include "Engine/Render/TextureSystem.h"

#include "Engine/Report/Reporter.h"
#include "Engine/String/StringLibrary.h"

namespace Corvid {

namespace {

constinit thread_local TextureSystem* t_Current = nullptr;

constexpr int kWorkingDirectoryCapacity = 256;
constinit char16_t s_WorkingDirectory[kWorkingDirectoryCapacity]{};

} // namespace

TextureSystem::~TextureSystem() {
    Check(m_Textures.empty(), "textureCount == 0");
}

TextureReference TextureSystem::Acquire(std::u16string_view name) {
    if (name.empty())
        return {};
    auto texture = m_Textures.find(name);
    if (texture == m_Textures.end())
        texture = m_Textures.insert(Texture{std::u16string(name), *this}).first;
    return TextureReference(*texture);
}

std::size_t TextureSystem::GetReferenceCount() const {
    std::size_t count = 0;
    for (const Texture& texture : m_Textures)
        count += static_cast<std::size_t>(texture.m_ReferenceCount);
    return count;
}

void TextureSystem::SetWorkingDirectory(const char16_t* path) {
    if (path != s_WorkingDirectory)
        CopyString({s_WorkingDirectory, kWorkingDirectoryCapacity}, path);
}

const char16_t* TextureSystem::GetWorkingDirectory() {
    return s_WorkingDirectory;
}

void TextureSystem::Destroy(const Texture& texture) {
    m_Textures.erase(m_Textures.find(texture));
}

TextureScope::TextureScope(TextureSystem& textures) : m_Outer(t_Current) {
    t_Current = &textures;
}

TextureScope::~TextureScope() {
    t_Current = m_Outer;
}

TextureReference AcquireTexture(std::u16string_view name) {
    return Check(t_Current != nullptr, "textureSystem != NULL") ? t_Current->Acquire(name) : TextureReference();
}

} // namespace Corvid
