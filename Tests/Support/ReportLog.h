#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "Engine/Report/Reporter.h"
#include "Engine/String/ReportText.h"

namespace Corvid {

// Collects the reports of the thread while it lives.
class ReportLog final : public ReportSink {
public:
    ReportLog() : m_Reporter(*this) {}

    void Take(const Report& report) override {
        std::string text;
        AppendReportText(text, report);
        m_Texts.push_back(text);
        m_Positions.push_back(report.m_Position);
    }

    const std::vector<std::string>& GetTexts() const { return m_Texts; }
    const std::vector<ReportPosition>& GetPositions() const { return m_Positions; }

    // How many of the reports hold `part`.
    int Count(std::string_view part) const {
        return static_cast<int>(std::count_if(
            m_Texts.begin(), m_Texts.end(), [part](const std::string& text) { return text.find(part) != text.npos; }));
    }

    // All of them, one after the other; forgotten afterwards.
    std::string Take() {
        std::string all;
        for (const std::string& text : m_Texts)
            all += text;
        m_Texts.clear();
        m_Positions.clear();
        return all;
    }

private:
    std::vector<std::string> m_Texts;
    std::vector<ReportPosition> m_Positions;
    Reporter m_Reporter;
};

} // namespace Corvid
