#include "Engine/Window/BrushSystem.h"

namespace Corvid {

void BrushSystem::BrushSet::Load(Archive& archive) {
    const TextureScope scope(m_Textures);
    Record::Load(archive);
}

void BrushSystem::BrushSet::ReturnTextures() {
    for (Brush& brush : m_Brushes)
        brush.ReturnTextures();
}

void BrushSystem::BrushSet::Clear() {
    m_Brushes.SetCapacity(0);
}

LoadResult BrushSystem::LoadBrushSet(FileArchiveSystem& archives, BrushSet& set, std::u16string_view path) {
    return archives.Load(path, set, [&set](FileArchive& archive) {
        set.Load(archive);
        return true;
    });
}

SaveResult BrushSystem::SaveBrushSet(FileArchiveSystem& archives, const BrushSet& set, std::u16string_view path,
                                     ArchiveFormat format) {
    return archives.Save(path, format, set, [&set](FileArchive& archive) { set.Save(archive); });
}

void BrushSystem::ReleaseTextures(BrushSet& set) {
    set.ReturnTextures();
}

} // namespace Corvid
