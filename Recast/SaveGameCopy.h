#pragma once

#include <string_view>

namespace Corvid {

// Copies a save game byte for byte, but for the byte at kPatchedOffset, which becomes kPatchedByte: behind the header
// of a binary archive that is the lowest byte of the first value. A shorter source is filled up with zeros. Nothing
// else of a save game is looked at.
inline constexpr int kPatchedOffset = 4;
inline constexpr char kPatchedByte = 0x28;

// Without a source, or with one that does not end, the destination is left alone; either is reported.
void CopySaveGame(std::u16string_view source, std::u16string_view destination);

} // namespace Corvid
