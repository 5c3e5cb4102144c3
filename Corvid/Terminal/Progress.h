#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <span>
#include <string>
#include <thread>

#include "Corvid/Terminal/Console.h"

namespace Corvid {

// Shows how far a run is: files done of all, bytes per second, time left. Nothing shows in the first half second, then
// a new line at most ten times a second; at the end it is gone.
class Progress {
public:
    static constexpr std::chrono::milliseconds kQuietTime{500};
    static constexpr std::chrono::milliseconds kInterval{100};

    Progress(Console& console, bool isShown, std::span<const std::uint64_t> sizes);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    // May be called from any thread.
    void AddFile(std::uint64_t bytes);

    static std::string LineFor(std::uint64_t filesDone, std::uint64_t files, std::uint64_t bytesDone,
                               std::uint64_t bytes, std::chrono::duration<double> time);

private:
    void Tick();

    Console& m_Console;
    bool m_IsShown;
    std::uint64_t m_Files;
    std::uint64_t m_Bytes = 0;
    std::atomic<std::uint64_t> m_FilesDone = 0;
    std::atomic<std::uint64_t> m_BytesDone = 0;
    std::chrono::steady_clock::time_point m_Start = std::chrono::steady_clock::now();
    std::mutex m_Mutex;
    std::condition_variable m_End;
    bool m_IsAtEnd = false;
    std::jthread m_Ticker; // only where progress is shown
};

} // namespace Corvid
