#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "Engine/Report/Reporter.h"
#include "Recast/TextSink.h"

namespace Corvid {

// Prints reports, each on a line of its own, in order. A file that is wrong from end to end must not drown its author:
// the whole output of reports is bounded by the size of the source, and a closing line counts what is left out. What
// tells of the outcome, such as a destination that could not be written, still has room then.
class BoundedReportSink final : public ReportSink {
public:
    static constexpr std::uint64_t kBaseBytes = std::uint64_t(1) << 20;
    static constexpr std::uint64_t kBytesPerSourceByte = 512;
    static constexpr std::uint64_t kMostBytes = std::uint64_t(32) << 20; // the closing line included

    // `sourcePath` is asked for its size when kBaseBytes are not enough.
    BoundedReportSink(TextSink& output, std::u16string_view sourcePath);
    ~BoundedReportSink();
    BoundedReportSink(const BoundedReportSink&) = delete;
    BoundedReportSink& operator=(const BoundedReportSink&) = delete;

    void Take(const Report& report) override;

private:
    bool HasRoomFor(std::size_t bytes);
    void Flush();

    TextSink& m_Output;
    std::u16string_view m_SourcePath;
    std::string m_Text;
    std::uint64_t m_Bound = kBaseBytes;
    bool m_IsBoundFinal = false;
    std::uint64_t m_BytesTaken = 0;
    std::uint64_t m_ReportsLeftOut = 0;
};

} // namespace Corvid
