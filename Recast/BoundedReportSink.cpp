#include "Recast/BoundedReportSink.h"

#include <algorithm>

#include "Engine/File/NativePath.h"
#include "Engine/String/ReportText.h"

namespace Corvid {

namespace {

constexpr std::size_t kFlushBytes = 64 * 1024;
constexpr std::size_t kClosingLineBytes = 128; // kept back for the closing line
constexpr std::size_t kOutcomeBytes = 4096;    // kept back for reports on the run's outcome

// Of the destination or of the run as a whole, not of a place in the source: whoever needs one report needs this one.
bool IsAboutOutcome(const Report& report) {
    if (report.m_Kind == Report::Kind::Message && report.m_Message == Message::OutOfMemory)
        return true;
    return report.m_Position.m_Kind == ReportPosition::Kind::None;
}

void AppendLine(std::string& text, const Report& report) {
    AppendReportText(text, report);
    if (text.empty() || text.back() != '\n')
        text.push_back('\n');
}

} // namespace

BoundedReportSink::BoundedReportSink(TextSink& output, std::u16string_view sourcePath)
    : m_Output(output), m_SourcePath(sourcePath) {}

BoundedReportSink::~BoundedReportSink() {
    Flush(); // leaves room in the buffer: nothing is allocated here
    if (m_ReportsLeftOut > 0) {
        Report closing;
        const ReportArgument arguments[] = {m_ReportsLeftOut};
        closing.m_Message = Message::ReportsLeftOut;
        closing.m_Arguments = arguments;
        AppendLine(m_Text, closing);
    }
    Flush();
}

void BoundedReportSink::Take(const Report& report) {
    const std::size_t keptBack = IsAboutOutcome(report) ? kClosingLineBytes : kClosingLineBytes + kOutcomeBytes;
    if (m_ReportsLeftOut > 0 && keptBack > kClosingLineBytes) { // none behind a gap, and no more work for it
        ++m_ReportsLeftOut;
        return;
    }
    const std::size_t start = m_Text.size();
    AppendLine(m_Text, report);
    const std::size_t bytes = m_Text.size() - start;
    if (!HasRoomFor(bytes + keptBack)) {
        m_Text.resize(start);
        ++m_ReportsLeftOut;
        return;
    }
    m_BytesTaken += bytes;
    if (m_Text.size() >= kFlushBytes)
        Flush();
}

bool BoundedReportSink::HasRoomFor(std::size_t bytes) {
    const std::uint64_t wanted = m_BytesTaken + bytes;
    if (wanted > m_Bound && !m_IsBoundFinal) {
        const std::uint64_t size = std::min(GetFileSize(m_SourcePath), kMostBytes);
        m_Bound = std::min(kMostBytes, kBaseBytes + kBytesPerSourceByte * size);
        m_IsBoundFinal = true;
    }
    return wanted <= m_Bound;
}

void BoundedReportSink::Flush() {
    m_Output.WriteText(m_Text);
    m_Text.clear();
}

} // namespace Corvid
