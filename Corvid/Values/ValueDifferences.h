#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "Corvid/Values/ValueTree.h"

namespace Corvid {

// Where two trees that ought to be the same differ, for one field of all elements.
struct FieldDifference {
    std::string m_Path;        // of the first element with the largest difference
    std::uint64_t m_Count = 0; // elements that differ
    double m_Largest = 0.0;    // of numbers; 0 where something else differs
};

enum class ColorPrecision { Floats, EightBits };

// Value by value, in the order of `a`: 0.0 and -0.0 differ, two NaN do not. Paths are those of `a`.
std::vector<FieldDifference> CompareValues(const ValueTree& a, const ValueTree& b, ColorPrecision colors);

} // namespace Corvid
