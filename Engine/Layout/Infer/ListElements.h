#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace Corvid {

// A line whose number may count the lines behind it.
struct CountPlace {
    std::uint32_t m_Sample = 0;
    std::int32_t m_Count = 0;
    // The labels of those lines, up to the next one that may count the same; an empty one is no part of an element.
    std::span<const std::string_view> m_Behind;
};

using ElementSizes = std::vector<std::size_t>; // lines of each element of one place

// Each finds, by place, the elements that one count has wherever it stands; nothing if there is no such reading. All
// but the last need a place with two elements or more.

// Groups of one to four labels, all alike.
std::optional<std::vector<ElementSizes>> FindEqualElements(std::span<const CountPlace> places);

// Elements that share one label at least, and have others only now and then.
std::optional<std::vector<ElementSizes>> FindVaryingElements(std::span<const CountPlace> places);

// The lines that stand behind a 1 and never behind a 0, where there are no larger numbers. Where not all of the last of
// them are always there, they may as well stand behind the element: the cautious leave those out which stand behind no
// 0 by accident, perhaps.
std::optional<std::vector<ElementSizes>> FindLoneElements(std::span<const CountPlace> places, bool isCautious);

} // namespace Corvid
