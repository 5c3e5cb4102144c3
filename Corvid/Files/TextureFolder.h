#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Corvid {

// The PNG and JPEG files of a folder, by the names of the textures that they are pictures of: without folder and
// extension, letters in any case.
class TextureFolder {
public:
    explicit TextureFolder(const std::string& path);

    const std::string& GetError() const { return m_Error; } // empty: the folder could be read

    // Nothing, and a clause that says why, when there is no such picture.
    std::optional<std::string> ReadPicture(std::u16string_view textureName, std::string& problem) const;

private:
    std::string m_Path;
    std::string m_Error;
    std::map<std::string, std::string> m_Files; // names by the lower-case name of the texture
};

} // namespace Corvid
