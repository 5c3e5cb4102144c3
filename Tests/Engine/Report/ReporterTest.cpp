#include "Engine/Report/Reporter.h"

#include <gtest/gtest.h>

#include <thread>

#include "Tests/Support/ReportLog.h"

namespace Corvid {
namespace {

class Place final : public PositionSource {
public:
    explicit Place(std::uint64_t line) : m_Line(line) {}
    ReportPosition GetPosition() const override { return {ReportPosition::Kind::Line, m_Line}; }

    std::uint64_t m_Line;
};

TEST(ReporterTest, InnermostReporterTakesAll) {
    EXPECT_EQ(Reporter::GetCurrent(), nullptr);
    ReportMessage(Message::OutOfMemory); // to nobody
    EXPECT_FALSE(Check(false, "false"));
    ReportLog outer;
    {
        ReportLog inner;
        EXPECT_TRUE(Check(true, "true"));
        EXPECT_FALSE(Check(false, "1 == 2"));
        EXPECT_EQ(inner.Count("Assertion failed: 1 == 2 (Engine/Report/ReporterTest, line "), 1);
        EXPECT_EQ(inner.GetTexts().size(), 1u);
    }
    EXPECT_EQ(outer.Take(), "");
    ReportMessage(Message::OutOfMemory);
    EXPECT_EQ(outer.GetTexts().size(), 1u);
}

TEST(ReporterTest, ReportsCarryThePositionOfTheWorkThatIsDone) {
    Place outer(3);
    const PositionScope outerScope(&outer); // reporters come and go within
    ReportLog reports;
    ReportMessage(Message::OutOfMemory);
    {
        const Place inner(40);
        const PositionScope innerScope(&inner);
        Check(false, "inner");
        const PositionScope none(nullptr);
        Check(false, "none");
    }
    outer.m_Line = 4;
    Check(false, "outer");
    std::vector<std::uint64_t> lines;
    for (const ReportPosition& position : reports.GetPositions())
        lines.push_back(position.m_Kind == ReportPosition::Kind::Line ? position.m_Value : 0);
    EXPECT_EQ(lines, (std::vector<std::uint64_t>{3, 40, 0, 4}));
}

TEST(ReporterTest, ThreadsReportForThemselves) {
    ReportLog here;
    std::thread([] {
        EXPECT_EQ(Reporter::GetCurrent(), nullptr);
        ReportLog there;
        ReportMessage(Message::OutOfMemory);
        EXPECT_EQ(there.GetTexts().size(), 1u);
    }).join();
    EXPECT_EQ(here.Take(), "");
}

} // namespace
} // namespace Corvid
