#include "Corvid/Batch/Parts.h"

#include <algorithm>
#include <exception>
#include <new>
#include <thread>
#include <vector>

namespace Corvid {

namespace {

struct Part {
    std::size_t m_Begin = 0;
    std::size_t m_End = 0;
    bool m_IsDone = false;
};

} // namespace

void WorkInParts(std::size_t count, std::size_t leastPart, int jobs,
                 const std::function<void(std::size_t, std::size_t)>& work) {
    const std::size_t most = static_cast<std::size_t>(std::max(jobs, 1));
    std::vector<Part> parts(std::clamp(count / leastPart, std::size_t{1}, most));
    for (std::size_t i = 0; i < parts.size(); ++i)
        parts[i] = {count / parts.size() * i, i + 1 < parts.size() ? count / parts.size() * (i + 1) : count};
    const auto workOn = [&work](Part& part) {
        work(part.m_Begin, part.m_End);
        part.m_IsDone = true;
    };
    std::vector<std::jthread> threads;
    try {
        for (std::size_t i = 1; i < parts.size(); ++i)
            threads.emplace_back([&workOn, &part = parts[i]] {
                try {
                    workOn(part);
                } catch (const std::bad_alloc&) { // left to the caller's thread, which may say so
                }
            });
    } catch (const std::exception&) { // no thread, or no memory for one
    }
    workOn(parts.front());
    threads.clear(); // waits for them
    for (Part& part : parts) {
        if (!part.m_IsDone)
            workOn(part);
    }
}

} // namespace Corvid
