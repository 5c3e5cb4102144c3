#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "Corvid/Gltf/GltfDocument.h"

namespace Corvid {

// The elements of accessors, as numbers. Whatever an accessor, its view and its buffer say is checked first; nothing is
// put into memory for more than `maxCount` elements, since a file may claim any number of zeros.
class GltfAccess {
public:
    explicit GltfAccess(const GltfDocument& document) : m_Document(document) {}

    // Components one after the other, integers as they are or, where the accessor says so, normalised to 0 to 1 or -1
    // to 1. False, with a clause that says what is wrong.
    bool ReadFloats(int accessor, int width, std::size_t maxCount, std::vector<float>& values,
                    std::string& error) const;
    bool ReadIndices(int accessor, std::size_t maxCount, std::vector<std::uint32_t>& values, std::string& error) const;

    // The two halves of 32-bit words, as attributes of our own have them.
    bool ReadWords(int accessor, std::size_t count, std::vector<std::uint32_t>& values) const;

    // Null when there is none of that number.
    const GltfAccessor* Find(int accessor) const;

private:
    struct Elements {
        const unsigned char* m_Bytes = nullptr; // null: zeros
        std::size_t m_Stride = 0;
    };

    bool Locate(int view, std::size_t offset, std::size_t elementSize, std::size_t count, Elements& elements,
                std::string& error) const;
    bool Gather(const GltfAccessor& accessor, std::size_t maxCount, std::vector<unsigned char>& bytes,
                std::string& error) const;
    bool Replace(const GltfAccessor& accessor, std::vector<unsigned char>& bytes, std::string& error) const;

    const GltfDocument& m_Document;
};

} // namespace Corvid
