#pragma once

#include <string_view>

#include "Engine/Render/Mesh/MeshParts.h"
#include "Engine/String/Unicode.h"

namespace Corvid {

// False when the text is longer than a name may be, and was cut between two characters.
inline bool CopyName(MeshName& name, std::u16string_view text) {
    constexpr std::size_t kMax = kMeshNameCapacity - 1;
    const std::size_t kept = text.size() > kMax && IsHighSurrogate(text[kMax - 1]) ? kMax - 1 : kMax;
    name = text.size() > kMax ? text.substr(0, kept) : text;
    return text.size() <= kMax;
}

} // namespace Corvid
