#pragma once

#include <cstdint>
#include <string>

#include "Engine/Report/Reporter.h"
#include "Engine/String/ReportText.h"

namespace Corvid {

// Only notes that something was reported, and the first of it: what it means is found out by reading again.
class NotingReportSink final : public ReportSink {
public:
    void Take(const Report& report) override {
        if (m_Count++ == 0)
            AppendReportText(m_First, report);
    }

    bool HasReports() const { return m_Count > 0; }
    const std::string& GetFirst() const { return m_First; }

private:
    std::uint64_t m_Count = 0;
    std::string m_First;
};

} // namespace Corvid
