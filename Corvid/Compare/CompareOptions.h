#pragma once

#include <cstdint>

namespace Corvid {

struct CompareOptions {
    std::uint32_t m_Ulp = 0;      // floats that are so many floats apart, or fewer, are the same
    double m_Tolerance = 0;       // so are those whose difference is not larger
    bool m_IsFull = false;        // tells each value of the lists that are told in summary otherwise
    bool m_IsWithDerived = false; // compares the lists that the program computes itself, too
    bool m_AreColorsBytes = true; // colours have 8 bits per channel: one side at least comes from text
};

} // namespace Corvid
