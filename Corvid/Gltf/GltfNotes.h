#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "Corvid/Gltf/GltfDocument.h"

namespace Corvid {

// Values as texts that give back the same bits: numbers are separated by blanks, a float is the shortest decimal that
// reads back as it, or its bits as 0x and eight digits where it is not finite. Texts are claims like everything in a
// file: what cannot be read whole is not there.

void NoteFloats(GltfNotes& notes, std::string_view name, std::span<const float> values);
bool FindFloats(const GltfNotes& notes, std::string_view name, std::span<float> values);

void NoteIntegers(GltfNotes& notes, std::string_view name, std::span<const std::int32_t> values);
std::optional<std::vector<std::int32_t>> FindIntegers(const GltfNotes& notes, std::string_view name);

// A string that is not well-formed is noted as its UTF-16 units, under `name` and "Units".
void NoteString(GltfNotes& notes, const std::string& name, std::u16string_view value);
std::optional<std::u16string> FindString(const GltfNotes& notes, const std::string& name);

} // namespace Corvid
