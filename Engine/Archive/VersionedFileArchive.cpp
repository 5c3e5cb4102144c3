#include "Engine/Archive/VersionedFileArchive.h"

#include "Engine/File/NativePath.h"

namespace Corvid {

VersionedFileArchive::VersionedFileArchive(FileArchiveSystem& archives, std::u16string_view path,
                                           std::int32_t currentVersion)
    : m_Archives(archives), m_WholePath(path), m_Path(path), m_CurrentVersion(currentVersion) {}

void VersionedFileArchive::LoadFile() {
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
    if (!m_Archives.Load(path, load)) {
        ReportMessage(Message::VersionedFileFailedToOpen, {path});
        WriteNewVersion();
        if (!m_Archives.Load(path, load))
            return;
    }
    if (!isOld)
        return;

    // What an old file still had to say is part of the state by now.
    WriteNewVersion();
    m_Archives.Load(path, [this](FileArchive& archive) {
        std::int32_t version = -1;
        archive.ReadInt(u"Version", version);
        Load(archive, version);
        return true;
    });
}

void VersionedFileArchive::WriteNewVersion() {
    m_Archives.Save(m_WholePath, m_Format, [this](FileArchive& archive) {
        archive.WriteInt(u"Version", m_CurrentVersion);
        Save(archive);
    });
}

} // namespace Corvid
