#include "Corvid/Batch/Parts.h"

#include <algorithm>
#include <exception>
#include <thread>
#include <vector>

namespace Corvid {

void WorkInParts(std::size_t count, std::size_t leastPart, int jobs,
                 const std::function<void(std::size_t, std::size_t)>& work) {
    const std::size_t mostParts = static_cast<std::size_t>(std::max(jobs, 1));
    const std::size_t parts = std::clamp(count / leastPart, std::size_t{1}, mostParts);
    std::vector<std::jthread> threads;
    std::size_t begin = 0;
    try {
        for (std::size_t part = 1; part < parts; ++part) {
            const std::size_t end = count / parts * part;
            threads.emplace_back([&work, begin, end] { work(begin, end); });
            begin = end;
        }
    } catch (const std::exception&) { // no thread or no memory for one: the caller's does what is left
    }
    work(begin, count);
}

} // namespace Corvid
