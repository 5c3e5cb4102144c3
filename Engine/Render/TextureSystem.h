#pragma once

#include <cstddef>
#include <set>
#include <string_view>

#include "Engine/Render/TextureReference.h"

namespace Corvid {

// Keeps one texture for each name that is referred to, for as long as a reference to it is out. Textures are names
// here: nothing is loaded from disk.
class TextureSystem {
public:
    TextureSystem() = default;
    ~TextureSystem(); // every reference is back by now
    TextureSystem(const TextureSystem&) = delete;
    TextureSystem& operator=(const TextureSystem&) = delete;

    // By exact name; an empty one gives no texture.
    TextureReference Acquire(std::u16string_view name);

    std::size_t GetTextureCount() const { return m_Textures.size(); }
    std::size_t GetReferenceCount() const; // over all textures

    // The folder that textures would be found in: state of the whole process, set once when the program starts. At
    // most 255 UTF-16 units: a longer path is reported and cut.
    static void SetWorkingDirectory(const char16_t* path);
    static const char16_t* GetWorkingDirectory();

private:
    friend class TextureReference;

    // An ordered set: a file that is made to let names collide in a hash table gains nothing here.
    struct LessByName {
        using is_transparent = void;
        bool operator()(const Texture& a, const Texture& b) const { return a.m_Name < b.m_Name; }
        bool operator()(std::u16string_view a, const Texture& b) const { return a < b.m_Name; }
        bool operator()(const Texture& a, std::u16string_view b) const { return a.m_Name < b; }
    };

    void Destroy(const Texture& texture);

    std::set<Texture, LessByName> m_Textures;
};

// Makes `textures` the system that records loaded on this thread acquire from, while this object lives.
class TextureScope {
public:
    explicit TextureScope(TextureSystem& textures);
    ~TextureScope();
    TextureScope(const TextureScope&) = delete;
    TextureScope& operator=(const TextureScope&) = delete;

private:
    TextureSystem* m_Outer;
};

// From the thread's current system. Without one that is reported, and there is no texture.
TextureReference AcquireTexture(std::u16string_view name);

} // namespace Corvid
