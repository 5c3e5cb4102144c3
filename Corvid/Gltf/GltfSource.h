#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "Corvid/Gltf/GltfFile.h"

namespace Corvid {

// A file made safe for the library that reads it, which trusts offsets of images, recurses as deep as the text is
// nested, and gives a value 200 bytes whatever its text takes.
struct GltfSource {
    std::string m_Text; // JSON whose buffers are data URIs, or numbers: indices of the list below
    std::vector<GltfBytes> m_Buffers;
    std::vector<std::string> m_NotTranslated;
};

// False, with a clause that says what is wrong.
bool PrepareGltfSource(std::span<const unsigned char> bytes, const GltfNeighbourReader& readNeighbour,
                       GltfSource& source, std::string& error);

// The path that a URI names, or empty: an absolute one, one with a scheme, and one that climbs out are not followed.
std::string PathOfGltfUri(std::string_view uri);

} // namespace Corvid
