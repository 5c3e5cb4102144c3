#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>

#include "Engine/Archive/FileArchiveSystem.h"
#include "Engine/Archive/Record.h"
#include "Engine/Archive/Text/TextFileArchive.h"
#include "Tests/Support/ReportLog.h"

namespace Corvid {

// Archives over memory. Files are called "memory"; their bytes include header and byte-order mark.
class ArchiveFixture : public ::testing::Test {
protected:
    static constexpr std::string_view kTextHeader = "\xEF\xBB\xBFTXT\r\n";
    static constexpr std::string_view kBinaryHeader = "BIN\n";

    // `save(FileArchive&)` into a new file of the given format; returns the file.
    template <class Step> std::string SaveWith(ArchiveFormat format, Step save) {
        std::string bytes;
        auto archive = m_Archives.OpenForWriting(File::WriteToMemory(u"memory", bytes), format);
        save(*archive);
        m_Archives.Release(std::move(archive));
        return bytes;
    }

    // `load(FileArchive&)` from a whole file; what it leaves unread is reported, as by the owners of objects.
    template <class Step> void LoadWith(std::string bytes, Step load) {
        auto archive = m_Archives.OpenForReading(File::ReadFromMemory(u"memory", std::move(bytes)));
        if (archive == nullptr)
            return;
        load(*archive);
        archive->ReportUnreadInput();
        m_Archives.Release(std::move(archive));
    }

    // An object as the only content of a file, without a label of its own.
    std::string Save(ArchiveFormat format, const Archivable& object) {
        return SaveWith(format, [&](FileArchive& archive) { archive.WriteObject(object); });
    }
    void Load(std::string bytes, Archivable& object) {
        LoadWith(std::move(bytes), [&](FileArchive& archive) { archive.ReadObject(object); });
    }

    // The same for text, without the header.
    std::string SaveText(const Archivable& object) {
        return Save(ArchiveFormat::Text, object).substr(kTextHeader.size());
    }
    void LoadText(std::string_view lines, Archivable& object) { Load("TXT\n" + std::string(lines), object); }

    ReportLog m_Reports;
    FileArchiveSystem m_Archives;
};

} // namespace Corvid
