#pragma once

#include <cstddef>

namespace Corvid::Fuzz {

// Memory as the code under test finds it while this lives: what it is given, and what lies on its stack, holds `fill`.
// Two loadings of the same bytes with different fills can only differ where something was read before it was set.
class HeapWatch {
public:
    explicit HeapWatch(unsigned char fill);
    ~HeapWatch();
    HeapWatch(const HeapWatch&) = delete;
    HeapWatch& operator=(const HeapWatch&) = delete;

    // The most that was taken at once, in bytes, beyond what was taken before.
    std::size_t GetPeak() const;
};

} // namespace Corvid::Fuzz
