#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "Engine/Archive/FileArchiveSystem.h"
#include "Engine/String/FixedString.h"

namespace Corvid {

// A file that one component owns outright, such as its settings: the first value is a version, and whenever the file
// is missing, unreadable or of another version, it is written anew from the component's present state. The component
// derives from this class.
class VersionedFileArchive : public FileObject {
public:
    // The path is opened whole; as recorded it has at most 259 UTF-16 units, a longer one is reported and cut. The
    // archive system outlives this object.
    VersionedFileArchive(FileArchiveSystem& archives, std::u16string_view path, std::int32_t currentVersion);
    VersionedFileArchive(const VersionedFileArchive&) = delete;
    VersionedFileArchive& operator=(const VersionedFileArchive&) = delete;

    // How the file is written from now on; text until set. Reading finds out the encoding by itself.
    void SetFormat(ArchiveFormat format) { m_Format = format; }

    const FixedString<260>& GetPath() const { return m_Path; }

    // Loads what the file holds, then leaves it with the current version, unless it cannot be written or memory was
    // too short for all of it.
    LoadResult LoadFile();

    // Replaces the file by one of the current version.
    SaveResult WriteNewVersion();

protected:
    ~VersionedFileArchive() = default;

    virtual bool IsOldVersion(std::int32_t version) const { return version != m_CurrentVersion; } // older or newer
    virtual void Load(Archive& archive, std::int32_t version) = 0;                                // -1: none was found
    virtual void Save(Archive& archive) const = 0;

private:
    FileArchiveSystem& m_Archives;
    std::u16string m_WholePath;
    FixedString<260> m_Path;
    ArchiveFormat m_Format = ArchiveFormat::Text;
    std::int32_t m_CurrentVersion;
};

} // namespace Corvid
