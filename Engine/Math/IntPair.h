#pragma once

#include <cstdint>

namespace Corvid {

struct IntPair {
    std::int32_t first = 0;
    std::int32_t second = 0;

    friend bool operator==(const IntPair&, const IntPair&) = default;
};

// As archived: position and size. How an owner keeps a rectangle in memory is its own business.
struct IntRect {
    std::int32_t x = 0;
    std::int32_t y = 0;
    std::int32_t width = 0;
    std::int32_t height = 0;

    friend bool operator==(const IntRect&, const IntRect&) = default;
};

} // namespace Corvid
