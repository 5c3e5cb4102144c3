#pragma once

#include <cstdint>
#include <vector>

#include "Corvid/Compare/ListElements.h"

namespace Corvid {

inline constexpr std::uint32_t kNoElement = 0xFFFFFFFF;

// Which element of one list became which one of the other. What has no partner was removed or added.
struct ElementPairing {
    std::vector<std::uint32_t> m_AfterOf;  // by place before
    std::vector<std::uint32_t> m_BeforeOf; // by place after
    std::vector<bool> m_IsMoved;           // by place after: out of the order that the other pairs keep
};

// Elements of their own, each with a content and perhaps a name. The same content belongs together wherever it stands,
// then the same name, then what is alike and stands between the same neighbours.
ElementPairing PairElements(const ValueComparison& values, const std::vector<ValueSpan>& before,
                            const std::vector<ValueSpan>& after);

// Elements that their place tells apart, as vertices: place by place, or, in lists of different lengths, around the
// ones that are the same. None is moved.
ElementPairing PairPlaces(const ValueComparison& values, const std::vector<ValueSpan>& before,
                          const std::vector<ValueSpan>& after);

} // namespace Corvid
