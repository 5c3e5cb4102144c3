#pragma once

#include <initializer_list>

#include "Engine/Report/Report.h"

namespace Corvid {

class ReportSink {
public:
    virtual void Take(const Report& report) = 0;

protected:
    ~ReportSink() = default;
};

// Tells where the input stands that is being worked on: an archive.
class PositionSource {
public:
    virtual ReportPosition GetPosition() const = 0;

protected:
    ~PositionSource() = default;
};

// The thread's current way of reporting, for as long as this object lives; an outer reporter steps back meanwhile.
// Without any reporter, reports are dropped. Two threads never share one.
class Reporter {
public:
    explicit Reporter(ReportSink& sink);
    ~Reporter();
    Reporter(const Reporter&) = delete;
    Reporter& operator=(const Reporter&) = delete;

    static Reporter* GetCurrent();

    void Send(Report& report) const;

private:
    friend class PositionScope;

    ReportSink& m_Sink;
    Reporter* m_Outer;
    const PositionSource* m_PositionSource = nullptr;
};

// Makes every report of the thread carry the position of `source` while this object lives.
class PositionScope {
public:
    explicit PositionScope(const PositionSource& source);
    ~PositionScope();
    PositionScope(const PositionScope&) = delete;
    PositionScope& operator=(const PositionScope&) = delete;

private:
    Reporter* m_Reporter;
    const PositionSource* m_Outer = nullptr;
};

// The formatted message reporter. The arguments stand in the order of the message's text.
void ReportMessage(Message message, std::initializer_list<ReportArgument> arguments = {});

void ReportFailedCheck(const char* condition, const char* sourceFile, int sourceLine);

// The assertion reporter: a condition that does not hold is reported with its text and place, and processing goes on.
// Returns the condition, so that the caller can stay within bounds after a failure.
inline bool Check(bool holds, const char* condition, const char* sourceFile = __builtin_FILE(),
                  int sourceLine = __builtin_LINE()) {
    if (!holds) [[unlikely]]
        ReportFailedCheck(condition, sourceFile, sourceLine);
    return holds;
}

} // namespace Corvid
