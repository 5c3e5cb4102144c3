#include "Engine/Report/Reporter.h"

namespace Corvid {

namespace {

constinit thread_local Reporter* t_Current = nullptr;

void Send(Report& report) {
    if (const Reporter* reporter = Reporter::GetCurrent())
        reporter->Send(report);
}

} // namespace

Reporter::Reporter(ReportSink& sink) : m_Sink(sink), m_Outer(t_Current) {
    t_Current = this;
}

Reporter::~Reporter() {
    t_Current = m_Outer;
}

Reporter* Reporter::GetCurrent() {
    return t_Current;
}

void Reporter::Send(Report& report) const {
    if (const PositionSource* source = PositionScope::GetCurrent())
        report.m_Position = source->GetPosition();
    m_Sink.Take(report);
}

void ReportMessage(Message message, std::initializer_list<ReportArgument> arguments) {
    Report report;
    report.m_Kind = Report::Kind::Message;
    report.m_Message = message;
    report.m_Arguments = {arguments.begin(), arguments.size()};
    Send(report);
}

void ReportFailedCheck(const char* condition, const char* sourceFile, int sourceLine) {
    Report report;
    report.m_Kind = Report::Kind::FailedCheck;
    report.m_Condition = condition;
    report.m_SourceFile = sourceFile;
    report.m_SourceLine = sourceLine;
    Send(report);
}

} // namespace Corvid
