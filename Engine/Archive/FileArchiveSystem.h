#pragma once

#include <memory>
#include <new>
#include <string_view>

#include "Engine/Archive/FileArchive.h"
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
    void Release(std::unique_ptr<FileArchive> archive);

    int GetFileArchiveCount() const { return m_FileArchiveCount; }

    // For every archive made from now on; see FileArchive::EnableChecksum.
    void EnableChecksums(bool isEnabled) { m_AreChecksumsEnabled = isEnabled; }

    // Opens, runs `load(FileArchive&)`, which tells whether it loaded an object, and releases. Input that a loaded
    // object left unread is reported. False when there is no archive to load from. Running out of memory ends the
    // loading with a report, like any other failure, but what it leaves is not saved; nor is anything after a source
    // that does not end.
    template <class Step> bool Load(std::u16string_view path, Step load);

    // Opens, runs `save(FileArchive&)` and releases. False when there is no archive to save to. Running out of memory,
    // now or in the last load, is reported and keeps the destination as it was.
    template <class Step> bool Save(std::u16string_view path, ArchiveFormat format, Step save);

private:
    void Abandon(std::unique_ptr<FileArchive> archive);

    int m_FileArchiveCount = 0;
    bool m_AreChecksumsEnabled = true;
    bool m_IsMemoryShort = false;   // in the last Load()
    bool m_IsSourceEndless = false; // of the last Load()
};

// False, and a report, when `step()` ran out of memory.
template <class Step> bool RunWithinMemory(Step step) {
    try {
        step();
        return true;
    } catch (const std::bad_alloc&) {
        ReportMessage(Message::OutOfMemory);
        return false;
    }
}

template <class Step> bool FileArchiveSystem::Load(std::u16string_view path, Step load) {
    std::unique_ptr<FileArchive> archive;
    const int fileArchiveCount = m_FileArchiveCount;
    m_IsSourceEndless = false;
    m_IsMemoryShort = !RunWithinMemory([&] { archive = OpenForReading(path); });
    if (m_IsMemoryShort)
        m_FileArchiveCount = fileArchiveCount;
    if (archive == nullptr)
        return false;
    m_IsMemoryShort = !RunWithinMemory([&] {
        const PositionScope scope(archive.get());
        if (load(*archive))
            archive->ReportUnreadInput();
    });
    m_IsMemoryShort = m_IsMemoryShort || archive->IsMemoryShort();
    Release(std::move(archive));
    return true;
}

template <class Step> bool FileArchiveSystem::Save(std::u16string_view path, ArchiveFormat format, Step save) {
    if (m_IsMemoryShort || m_IsSourceEndless)
        return false;
    std::unique_ptr<FileArchive> archive;
    const int fileArchiveCount = m_FileArchiveCount;
    if (!RunWithinMemory([&] { archive = OpenForWriting(path, format); }))
        m_FileArchiveCount = fileArchiveCount;
    if (archive == nullptr)
        return false;
    if (RunWithinMemory([&] { save(*archive); }) && !archive->IsMemoryShort())
        Release(std::move(archive));
    else
        Abandon(std::move(archive));
    return true;
}

} // namespace Corvid
