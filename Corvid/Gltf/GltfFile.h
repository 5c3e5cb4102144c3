#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "Corvid/Gltf/GltfDocument.h"

namespace Corvid {

using GltfBytes = std::vector<unsigned char>;

// Reads a file beside the one that names it: a relative path of plain parts, separated by '/'. Nothing when it cannot.
using GltfNeighbourReader = std::function<std::optional<GltfBytes>(const std::string& path)>;

// Reads a GLB, or glTF as JSON, as any tool may have written it. Everything in it is a claim: what it says of sizes is
// held against the bytes that are there, nesting and the number of values are bounded by the length of the text.
// False, with a clause that says what is wrong, when the file cannot be used.
bool ReadGltf(std::span<const unsigned char> bytes, const GltfNeighbourReader& readNeighbour, GltfDocument& document,
              std::string& error);

// A GLB with the document's one buffer. False, with a clause that says why, when memory is short, or above 4 GiB.
bool WriteGlb(GltfDocument document, std::string& bytes, std::string& error);

} // namespace Corvid
