#pragma once

#include <memory>
#include <new>
#include <string_view>

#include "Engine/Archive/FileArchive.h"
#include "Engine/Archive/FileObject.h"
#include "Engine/Archive/FloatForm.h"

namespace Corvid {

enum class ArchiveFormat {
    Text = 0,
    Binary = 1,
    Steam = 2, // remote storage: opens no file; here its bytes stay in memory
};

// Turns a path into an open archive and back. One run owns one; every archive that it hands out comes back through
// Release() before it is destroyed.
class FileArchiveSystem {
public:
    FileArchiveSystem() = default;
    ~FileArchiveSystem();
    FileArchiveSystem(const FileArchiveSystem&) = delete;
    FileArchiveSystem& operator=(const FileArchiveSystem&) = delete;

    // Finds out the encoding by the file's first bytes: "BIN", or "TXT" anywhere in the first line. Null, with a
    // report, when the file cannot be opened or is neither. The source is opened and read once.
    std::unique_ptr<FileArchive> OpenForReading(std::u16string_view path);
    std::unique_ptr<FileArchive> OpenForReading(std::unique_ptr<File> file);

    // The header is written. Null, with a report, when the file cannot be opened. Any value outside the enumeration is
    // reported and yields null. `floatForm` is for text.
    std::unique_ptr<FileArchive> OpenForWriting(std::u16string_view path, ArchiveFormat format,
                                                FloatForm floatForm = FloatForm::SixDecimals);
    std::unique_ptr<FileArchive> OpenForWriting(std::unique_ptr<File> file, ArchiveFormat format,
                                                FloatForm floatForm = FloatForm::SixDecimals);

    // `file` is null for ArchiveFormat::Steam only. Any other format value is reported and yields null. The open count
    // goes up in every case.
    std::unique_ptr<FileArchive> CreateArchive(std::unique_ptr<File> file, ArchiveFormat format,
                                               FloatForm floatForm = FloatForm::SixDecimals);

    // Closes the file, destroys the archive. Null (an archive that could not be made) still brings the count down.
    // False when the file could not be closed, which is reported: a destination then keeps what it had.
    bool Release(std::unique_ptr<FileArchive> archive);

    int GetFileArchiveCount() const { return m_FileArchiveCount; }

    // For every archive made from now on; see FileArchive::EnableChecksum.
    void EnableChecksums(bool isEnabled) { m_AreChecksumsEnabled = isEnabled; }

    // Opens, runs `load(FileArchive&)`, which tells whether it loaded an object, and releases. Input that a loaded
    // object left unread is reported. Running out of memory ends the loading with a report, like any other failure.
    template <class Step> LoadResult Load(std::u16string_view path, Step load);

    // The same for an object that exists already: one that is left incomplete remembers it.
    template <class Step> LoadResult Load(std::u16string_view path, FileObject& object, Step load);

    // Opens, runs `save(FileArchive&)` and releases.
    template <class Step> SaveResult Save(std::u16string_view path, ArchiveFormat format, Step save);

    // The same for an object that files are loaded into: it is saved only when it is whole.
    template <class Step>
    SaveResult Save(std::u16string_view path, ArchiveFormat format, const FileObject& object, Step save);

private:
    // Without closing its file, the destination of an archive keeps what it had.
    void Abandon(std::unique_ptr<FileArchive> archive);

    int m_FileArchiveCount = 0;
    bool m_AreChecksumsEnabled = true;
    bool m_IsSourceEndless = false; // that was opened last
};

// False, and a report, when `step()` ran out of memory. Whatever needs memory throws std::bad_alloc, and nothing else
// is thrown; it is caught here, where a whole object, file or run is at stake.
template <class Step> bool RunWithinMemory(Step step) {
    try {
        step();
        return true;
    } catch (const std::bad_alloc&) {
        ReportMessage(Message::OutOfMemory);
        return false;
    }
}

template <class Step> LoadResult FileArchiveSystem::Load(std::u16string_view path, Step load) {
    std::unique_ptr<FileArchive> archive;
    const int fileArchiveCount = m_FileArchiveCount;
    m_IsSourceEndless = false;
    if (!RunWithinMemory([&] { archive = OpenForReading(path); })) {
        m_FileArchiveCount = fileArchiveCount;
        return LoadResult::Incomplete;
    }
    if (archive == nullptr)
        return m_IsSourceEndless ? LoadResult::Incomplete : LoadResult::NotOpened;
    const bool isWhole = RunWithinMemory([&] {
        const PositionScope scope(archive.get());
        if (load(*archive))
            archive->ReportUnreadInput();
    });
    Release(std::move(archive));
    return isWhole ? LoadResult::Loaded : LoadResult::Incomplete;
}

template <class Step> LoadResult FileArchiveSystem::Load(std::u16string_view path, FileObject& object, Step load) {
    const LoadResult result = Load(path, load);
    object.m_IsWhole = object.m_IsWhole && result != LoadResult::Incomplete;
    return result;
}

template <class Step> SaveResult FileArchiveSystem::Save(std::u16string_view path, ArchiveFormat format, Step save) {
    std::unique_ptr<FileArchive> archive;
    const int fileArchiveCount = m_FileArchiveCount;
    if (!RunWithinMemory([&] { archive = OpenForWriting(path, format); })) {
        m_FileArchiveCount = fileArchiveCount;
        return SaveResult::Failed;
    }
    if (archive == nullptr)
        return SaveResult::NotOpened;
    if (!RunWithinMemory([&] { save(*archive); })) {
        Abandon(std::move(archive));
        return SaveResult::Failed;
    }
    return Release(std::move(archive)) ? SaveResult::Saved : SaveResult::Failed;
}

template <class Step>
SaveResult FileArchiveSystem::Save(std::u16string_view path, ArchiveFormat format, const FileObject& object,
                                   Step save) {
    return object.IsWhole() ? Save(path, format, save) : SaveResult::NotWhole;
}

} // namespace Corvid
