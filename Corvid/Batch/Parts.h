#pragma once

#include <cstddef>
#include <functional>

namespace Corvid {

// Calls `work(begin, end)` for parts that make up the places from 0 to `count`, at most `jobs` of them at a time. A
// part has `leastPart` places or more, as fewer would not be worth a thread. A part that a thread lacks the memory for
// is begun again by the caller's thread.
void WorkInParts(std::size_t count, std::size_t leastPart, int jobs,
                 const std::function<void(std::size_t, std::size_t)>& work);

} // namespace Corvid
