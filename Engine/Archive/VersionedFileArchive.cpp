#include "Engine/Archive/VersionedFileArchive.h"

#include "Engine/File/NativePath.h"

namespace Corvid {

VersionedFileArchive::VersionedFileArchive(FileArchiveSystem& archives, std::u16string_view path,
                                           std::int32_t currentVersion)
    : m_Archives(archives), m_WholePath(path), m_Path(path), m_CurrentVersion(currentVersion) {}

LoadResult VersionedFileArchive::LoadFile() {
    const std::u16string_view path = m_WholePath;
    if (GetPathKind(path) != PathKind::File) {
        ReportMessage(Message::VersionedFileNotFound, {path});
        WriteNewVersion();
    }

    bool isOld = false;
    const auto load = [&](FileArchive& archive) {
        std::int32_t version = -1;
        archive.ReadInt(u"Version", version);
        isOld = IsOldVersion(version);
        if (isOld)
            ReportMessage(Message::VersionedFileOld, {path});
        Load(archive, version);
        return true;
    };
    LoadResult result = m_Archives.Load(path, *this, load);
    if (result == LoadResult::NotOpened) {
        ReportMessage(Message::VersionedFileFailedToOpen, {path});
        WriteNewVersion();
        result = m_Archives.Load(path, *this, load);
    }
    if (!isOld || result != LoadResult::Loaded)
        return result;

    // What an old file still had to say is part of the state by now.
    WriteNewVersion();
    return m_Archives.Load(path, *this, [this](FileArchive& archive) {
        std::int32_t version = -1;
        archive.ReadInt(u"Version", version);
        Load(archive, version);
        return true;
    });
}

SaveResult VersionedFileArchive::WriteNewVersion() {
    return m_Archives.Save(m_WholePath, m_Format, *this, [this](FileArchive& archive) {
        archive.WriteInt(u"Version", m_CurrentVersion);
        Save(archive);
    });
}

} // namespace Corvid
