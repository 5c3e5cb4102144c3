#pragma once

#include <string_view>

#include "Engine/Archive/FileArchiveSystem.h"
#include "Engine/Archive/Record.h"
#include "Engine/Render/TextureSystem.h"
#include "Engine/Window/Brush.h"

namespace Corvid {

// Brushes files: each holds one set.
class BrushSystem {
public:
    class BrushSet final : public Record<BrushSet>, public FileObject {
    public:
        static void Fields(auto& self, auto& fields) {
            fields.Value(u"onlyLoadOnDemand", self.m_OnlyLoadOnDemand);
            fields.List(u"brushCount", u"brush", self.m_Brushes);
        }

        using Record::Load;
        void Load(Archive& archive) override; // acquires from the set's own textures

        // Where the set comes from: a path longer than the capacity is reported and cut.
        void SetFileName(std::u16string_view path) { m_FileName = path; }
        const FixedString<256>& GetFileName() const { return m_FileName; }

        const DynamicVector<Brush>& GetBrushes() const { return m_Brushes; }
        const TextureSystem& GetTextures() const { return m_Textures; }

        void ReturnTextures();
        void Clear();

    private:
        TextureSystem m_Textures; // outlives the brushes, which hold references
        FixedString<256> m_FileName;
        bool m_OnlyLoadOnDemand = false;
        DynamicVector<Brush> m_Brushes;
    };

    // The path is opened whole, whatever its length. A set whose file cannot be opened stays as it was.
    static LoadResult LoadBrushSet(FileArchiveSystem& archives, BrushSet& set, std::u16string_view path);
    static SaveResult SaveBrushSet(FileArchiveSystem& archives, const BrushSet& set, std::u16string_view path,
                                   ArchiveFormat format);

    // Returns every texture reference that the set's brushes hold, before the set is cleared and destroyed.
    static void ReleaseTextures(BrushSet& set);
};

} // namespace Corvid
