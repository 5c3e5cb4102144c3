#include "Corvid/Terminal/Console.h"

#include <algorithm>

namespace Corvid {

namespace {

constexpr std::size_t kGatheredBytes = 64 * 1024;
constexpr std::string_view kClearLine = "\r\x1b[K";

// What was typed may not move the cursor about: control characters are shown as git shows them.
std::string WithoutControlCharacters(std::string_view message) {
    std::string text(message);
    std::ranges::replace_if(
        text, [](char unit) { return static_cast<unsigned char>(unit) < 0x20 || unit == 0x7F; }, '?');
    return text;
}

bool Decide(Look look, bool byItself) {
    return look == Look::Always || (look == Look::Auto && byItself);
}

} // namespace

Console::Console(TextOutput& output, TextOutput& errors, TerminalFacts facts)
    : m_Output(output), m_Errors(errors), m_Facts(facts) {}

Console::~Console() {
    Finish();
}

void Console::Print(std::string_view text) {
    if (text.empty())
        return;
    const std::lock_guard lock(m_Mutex);
    if (m_HasLostReader || m_HasFailed)
        return;
    m_Gathered += text;
    if (m_Gathered.size() >= kGatheredBytes || m_Output.IsTerminal())
        Flush();
}

void Console::PrintError(std::string_view text) {
    const std::lock_guard lock(m_Mutex);
    Flush();
    HideProgress();
    if (!m_HasLostReader)     // the run ends quietly
        m_Errors.Write(text); // nobody is left to be told of a failure
}

int Console::PrintUsageError(std::string_view command, std::string_view message) {
    const std::string name = command.empty() ? "corvid" : "corvid " + std::string(command);
    PrintError(name + ": " + WithoutControlCharacters(message) + "\nTry '" + name + " --help'.\n");
    return kExitCouldNotRun;
}

bool Console::Finish() {
    const std::lock_guard lock(m_Mutex);
    Flush();
    HideProgress();
    return !m_HasFailed;
}

bool Console::HasColor(Look look, bool isForErrors) const {
    const TextOutput& stream = isForErrors ? m_Errors : m_Output;
    return Decide(look, !m_Facts.m_IsDumb && !m_Facts.m_IsColorUnwanted && stream.IsTerminal());
}

bool Console::HasProgress(Look look) const {
    return Decide(look, !m_Facts.m_IsDumb && !m_Facts.m_IsColorUnwanted && m_Errors.IsTerminal());
}

void Console::ShowProgress(std::string_view line) {
    const std::lock_guard lock(m_Mutex);
    HideProgress();
    if (line.empty())
        return;
    m_Errors.Write(line);
    m_IsProgressShown = true;
}

void Console::Flush() {
    if (m_Gathered.empty())
        return;
    HideProgress();
    const std::string error = m_HasFailed || m_HasLostReader ? std::string() : m_Output.Write(m_Gathered);
    m_Gathered.clear();
    if (error.empty())
        return;
    if (m_Output.HasLostReader()) {
        m_HasLostReader = true;
        return;
    }
    m_HasFailed = true;
    m_Errors.Write("corvid: standard output cannot be written: " + error + "\n");
}

void Console::HideProgress() {
    if (m_IsProgressShown)
        m_Errors.Write(kClearLine);
    m_IsProgressShown = false;
}

} // namespace Corvid
