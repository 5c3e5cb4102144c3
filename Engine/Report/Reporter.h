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

// While this object lives, on the stack, the reports of the thread are about what `source` reads and carry its
// position; with null they are about no input. Whoever works on one of several inputs opens a scope for that work.
class PositionScope {
public:
    explicit PositionScope(const PositionSource* source) : m_Outer(t_Current) { t_Current = source; }
    ~PositionScope() { t_Current = m_Outer; }
    PositionScope(const PositionScope&) = delete;
    PositionScope& operator=(const PositionScope&) = delete;

    static const PositionSource* GetCurrent() { return t_Current; }

private:
    static inline constinit thread_local const PositionSource* t_Current = nullptr;

    const PositionSource* m_Outer;
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
    ReportSink& m_Sink;
    Reporter* m_Outer;
};

// The formatted message reporter. The arguments stand in the order of the message's text.
void ReportMessage(Message message, std::initializer_list<ReportArgument> arguments = {});

void ReportFailedCheck(const char* condition, const char* sourceFile, int sourceLine);

// The assertion reporter: a condition that does not hold is reported with its text and place, and processing goes on.
// The texts are output, which people search for and compare: they stay exactly as they are, whatever becomes of the
// code around them. Returns the condition, so that the caller can stay within bounds after a failure.
inline bool Check(bool holds, const char* condition, const char* sourceFile = __builtin_FILE(),
                  int sourceLine = __builtin_LINE()) {
    if (!holds) [[unlikely]]
        ReportFailedCheck(condition, sourceFile, sourceLine);
    return holds;
}

} // namespace Corvid
