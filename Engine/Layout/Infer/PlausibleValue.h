#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Engine/Layout/Layout.h"

namespace Corvid {

inline constexpr double kSmallestFloat = 1e-12; // integers and letters, read as floats, lie below

// What the text samples say of a field's numbers.
struct NumberRange {
    double m_Largest = 0.0;       // magnitude
    std::size_t m_ValueCount = 0; // that have been seen
    bool m_HasNegative = false;
    std::vector<std::int32_t> m_Numbers; // all integers that have been seen, where they are few; sorted
    int m_DecimalPlaces = -1;            // that all decimals get by with; -1: they are no round numbers
};

// The bytes that the value at the front of `bytes` takes, if it can be one of this kind that somebody meant: a bool of
// 0 or 1, a well-formed string without control characters, finite numbers of a size that goes with the range, colour
// channels of 0 to 1. Nothing otherwise.
std::optional<std::size_t> SizeOfPlausible(LayoutKind kind, std::string_view bytes, const NumberRange& range);

// Whether a value that can be one of this kind is like none that the text samples show: another integer where many
// values are few numbers, or a decimal that is not as round as all of them.
bool IsUnlike(LayoutKind kind, std::string_view bytes, const NumberRange& range);

// The value in front, whose size is known to be right.
std::int32_t TakeInt(std::string_view bytes);
std::u16string TakeString(std::string_view bytes);

} // namespace Corvid
