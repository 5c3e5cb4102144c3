#include "Corvid/Content/ReferenceIndex.h"

#include <span>
#include <vector>

#include "Corvid/Files/FailureLine.h"
#include "Corvid/Files/FolderListing.h"
#include "Corvid/Files/SystemError.h"
#include "Corvid/Values/ValueText.h"
#include "Corvid/Values/ValueTreeWriter.h"
#include "Engine/File/PathParts.h"

namespace Corvid {

namespace {

// Letters of Latin, Greek and Cyrillic scripts, which is what file names are made of; others have no case here.
char16_t Lower(char16_t unit) {
    const bool isLatin = (unit >= u'A' && unit <= u'Z') || (unit >= 0xC0 && unit <= 0xDE && unit != 0xD7);
    const bool isGreek = unit >= 0x391 && unit <= 0x3A9;
    if (isLatin || isGreek || (unit >= 0x410 && unit <= 0x42F))
        return static_cast<char16_t>(unit + 0x20);
    return unit >= 0x400 && unit <= 0x40F ? static_cast<char16_t>(unit + 0x50) : unit;
}

std::u16string KeyOf(std::u16string_view name) {
    std::u16string key(name);
    for (char16_t& unit : key)
        unit = Lower(unit);
    return key;
}

std::span<const std::u16string_view> UsualExtensions(AssetKind asset) {
    static constexpr std::u16string_view kMesh[] = {u".mesh"};
    static constexpr std::u16string_view kTexture[] = {u".dds", u".tga", u".png"};
    static constexpr std::u16string_view kAnimation[] = {u".texanim"};
    static constexpr std::u16string_view kParticle[] = {u".particle"};
    static constexpr std::u16string_view kDefinition[] = {u".entity"};
    switch (asset) {
    case AssetKind::Mesh:
        return kMesh;
    case AssetKind::Texture:
        return kTexture;
    case AssetKind::TextureAnimation:
        return kAnimation;
    case AssetKind::Particle:
        return kParticle;
    case AssetKind::Definition:
        return kDefinition;
    case AssetKind::None:
        break;
    }
    return {};
}

} // namespace

bool ReferenceIndex::Read(const std::string& folder) {
    return ReadFolder(folder);
}

bool ReferenceIndex::ReadFolder(const std::string& folder) {
    const std::optional<std::vector<FolderEntry>> entries = ListFolder(folder);
    if (!entries) {
        m_Error = FailureLine(folder, DiagnosticCode::CannotRead, LastSystemError());
        return false;
    }
    for (const FolderEntry& entry : *entries) {
        if (entry.m_Name.starts_with('.'))
            continue;
        if (entry.m_Type != FolderEntry::Type::Folder)
            Add(EnginePath(entry.m_Name));
        else if (!ReadFolder(folder.ends_with('/') ? folder + entry.m_Name : folder + '/' + entry.m_Name))
            return false;
    }
    return true;
}

void ReferenceIndex::Add(std::u16string_view fileName) {
    m_Names.insert(KeyOf(fileName));
}

bool ReferenceIndex::Has(std::u16string_view name, AssetKind asset) const {
    const PathParts parts = SplitPath(name);
    const std::u16string file = KeyOf(std::u16string(parts.m_Name) + std::u16string(parts.m_Extension));
    if (m_Names.contains(file))
        return true;
    if (!parts.m_Extension.empty())
        return false;
    for (const std::u16string_view extension : UsualExtensions(asset)) {
        if (m_Names.contains(file + std::u16string(extension)))
            return true;
    }
    return false;
}

void CheckReferences(const KindObject& object, const ReferenceIndex& index, DiagnosticLog& log) {
    for (const Reference& reference : FindReferences(object, StoredValuesOf(object))) {
        if (index.Has(reference.m_Name, reference.m_Asset))
            continue;
        std::string message = "no " + std::string(NounOf(reference.m_Asset)) + " ";
        AppendQuoted(message, reference.m_Name);
        log.Add(DiagnosticCode::MissingReference, {}, reference.m_Field, message + " is there");
    }
}

} // namespace Corvid
