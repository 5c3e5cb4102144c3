#include "Corvid/Terminal/Progress.h"

#include <algorithm>
#include <cstdio>
#include <numeric>
#include <system_error>

namespace Corvid {

namespace {

std::string BytesText(double bytes) {
    constexpr const char* kUnits[] = {"B", "KB", "MB", "GB"};
    std::size_t unit = 0;
    for (; bytes >= 1000.0 && unit < 3; ++unit)
        bytes /= 1000.0;
    char text[32];
    std::snprintf(text, sizeof text, bytes < 10.0 && unit > 0 ? "%.1f %s" : "%.0f %s", bytes, kUnits[unit]);
    return text;
}

std::string TimeText(double seconds) {
    const auto whole = static_cast<std::uint64_t>(seconds + 0.5);
    char text[48];
    if (whole >= 3600)
        std::snprintf(text, sizeof text, "%u:%02u:%02u", static_cast<unsigned>(whole / 3600),
                      static_cast<unsigned>(whole / 60 % 60), static_cast<unsigned>(whole % 60));
    else
        std::snprintf(text, sizeof text, "%u:%02u", static_cast<unsigned>(whole / 60),
                      static_cast<unsigned>(whole % 60));
    return text;
}

} // namespace

Progress::Progress(Console& console, bool isShown, std::span<const std::uint64_t> sizes)
    : m_Console(console), m_IsShown(isShown), m_Files(sizes.size()) {
    m_Bytes = std::accumulate(sizes.begin(), sizes.end(), std::uint64_t{0});
    if (!isShown)
        return;
    try {
        m_Ticker = std::jthread([this] { Tick(); });
    } catch (const std::system_error&) { // no thread is left for it: the work goes on unseen
    }
}

Progress::~Progress() {
    {
        const std::lock_guard lock(m_Mutex);
        m_IsAtEnd = true;
    }
    m_End.notify_all();
    if (m_Ticker.joinable())
        m_Ticker.join();
    m_Console.ShowProgress({});
}

void Progress::AddFile(std::uint64_t bytes) {
    if (!m_IsShown)
        return; // even counting together costs, where files take microseconds
    ++m_FilesDone;
    m_BytesDone += bytes;
}

void Progress::Tick() {
    std::unique_lock lock(m_Mutex);
    for (auto wait = kQuietTime; !m_End.wait_for(lock, wait, [this] { return m_IsAtEnd; }); wait = kInterval) {
        std::string line =
            LineFor(m_FilesDone, m_Files, m_BytesDone, m_Bytes, std::chrono::steady_clock::now() - m_Start);
        const auto columns = static_cast<std::size_t>(std::max(m_Console.GetProgressColumns() - 1, 1));
        line.resize(std::min(line.size(), columns)); // a line that wraps could not be taken away
        m_Console.ShowProgress(line);
    }
}

std::string Progress::LineFor(std::uint64_t filesDone, std::uint64_t files, std::uint64_t bytesDone,
                              std::uint64_t bytes, std::chrono::duration<double> time) {
    const double seconds = std::max(time.count(), 1e-3);
    std::string line = std::to_string(filesDone) + " of " + std::to_string(files) + " files, " +
                       BytesText(static_cast<double>(bytesDone) / seconds) + "/s";
    // By bytes, which files take time for; by files where these say nothing.
    const double done = bytes > 0 && bytesDone > 0 ? static_cast<double>(bytesDone) / static_cast<double>(bytes)
                        : files > 0                ? static_cast<double>(filesDone) / static_cast<double>(files)
                                                   : 0.0;
    if (done > 0.0)
        line += ", " + TimeText(std::max(seconds / done - seconds, 0.0)) + " left";
    return line;
}

} // namespace Corvid
