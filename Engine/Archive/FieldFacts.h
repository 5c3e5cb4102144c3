#pragma once

#include <cstdint>

namespace Corvid {

// What a field list says of a field beyond its label and type. Loading and saving ignore these facts: an archive takes
// any value. They are for whoever checks or shows a file.

// The kind of file that a string names, so that its name can be looked up.
enum class AssetKind { None, Mesh, Texture, TextureAnimation, Particle, Definition };

// An integer is meaningful from m_Least to m_Most, both included.
struct ValueRange {
    std::int32_t m_Least = INT32_MIN;
    std::int32_t m_Most = INT32_MAX;
};

} // namespace Corvid
