#include "Fuzz/Archives.h"

#include <cstdio>
#include <cstdlib>
#include <utility>

#include "Engine/Archive/Text/TextFileArchive.h"
#include "Engine/String/ReportText.h"

namespace Corvid::Fuzz {

namespace {

constexpr std::string_view kTextHeader = "TXT\n";
constexpr std::string_view kBinaryHeader = "BIN\n";
constexpr int kReportsWithText = 64;
constexpr int kMostReports = 1000;

bool IsAboutAKeptValue(const Report& report) {
    if (report.m_Kind == Report::Kind::Message)
        return report.m_Message == Message::IncompleteLayout;
    return std::string_view(report.m_SourceFile).find("Billboard") != std::string_view::npos; // an unknown anchor
}

} // namespace

void Require(bool holds, const char* statement) {
    if (holds)
        return;
    std::fprintf(stderr, "Does not hold: %s\n", statement);
    std::abort();
}

void ReportTrace::Take(const Report& report) {
    Add(static_cast<std::uint64_t>(report.m_Message));
    Add(report.m_Position.m_Value);
    if (m_Count++ < kReportsWithText) {
        m_Text.clear();
        AppendReportText(m_Text, report);
        Add(m_Text);
    }
    if (!IsAboutAKeptValue(report))
        ++m_ComplaintCount;
    if (m_Count == kMostReports && m_Archive != nullptr)
        m_Archive->Stop();
}

void ReportTrace::Add(std::string_view bytes) {
    for (const char byte : bytes)
        m_Hash = (m_Hash ^ static_cast<unsigned char>(byte)) * 0x100000001B3;
}

std::string AsFile(std::string_view input, ArchiveFormat format) {
    if (format == ArchiveFormat::Binary)
        return input.starts_with("BIN") ? std::string(input) : std::string(kBinaryHeader).append(input);
    const bool hasHeader = input.substr(0, input.find('\n')).find("TXT") != input.npos;
    return hasHeader && !input.starts_with("BIN") ? std::string(input) : std::string(kTextHeader).append(input);
}

Trace Load(const std::string& file, KindObject& object, Way way) {
    Trace trace;
    ReportTrace reports;
    FileArchiveSystem archives;
    archives.EnableChecksums(way != Way::AsWritten);
    std::unique_ptr<FileArchive> archive = archives.OpenForReading(File::ReadFromMemory(u"memory", file));
    trace.m_HasArchive = archive != nullptr;
    if (archive != nullptr) {
        reports.Watch(archive.get());
        auto* const text = dynamic_cast<TextFileArchive*>(archive.get());
        if (text != nullptr && way == Way::ByLine)
            text->ReadByLineOnly();
        object.Load(*archive);
        trace.m_End = archive->GetPosition();
        if (way != Way::AsWritten)
            trace.m_Checksum = archive->GetChecksum();
        archive->ReportUnreadInput();
        archives.Release(std::move(archive));
    }
    trace.m_Reports = reports.GetHash();
    trace.m_ComplaintCount = reports.GetComplaintCount();
    return trace;
}

std::string Save(const KindObject& object, ArchiveFormat format) {
    std::string file;
    FileArchiveSystem archives;
    auto archive = archives.OpenForWriting(File::WriteToMemory(u"memory", file), format);
    object.Save(*archive);
    archives.Release(std::move(archive));
    return file;
}

} // namespace Corvid::Fuzz
