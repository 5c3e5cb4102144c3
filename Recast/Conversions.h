#pragma once

#include <string_view>

#include "Engine/Archive/FileArchiveSystem.h"

namespace Corvid {

// One conversion of each kind, in process: the source is loaded into the engine's own objects, which are saved again.
// What goes wrong is reported; an object that could be loaded in part, or not at all, is saved as it is. Paths are
// opened whole, however long they are.

void ConvertMesh(FileArchiveSystem& archives, std::u16string_view source, std::u16string_view destination,
                 ArchiveFormat format);
void ConvertParticle(FileArchiveSystem& archives, std::u16string_view source, std::u16string_view destination,
                     ArchiveFormat format);
void ConvertBrushes(FileArchiveSystem& archives, std::u16string_view source, std::u16string_view destination,
                    ArchiveFormat format);
// Without a definition in the source, nothing is written.
void ConvertEntity(FileArchiveSystem& archives, std::u16string_view source, std::u16string_view destination,
                   ArchiveFormat format);

} // namespace Corvid
