#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <vector>

#include "Engine/Layout/Layout.h"

namespace Corvid {

// Integers side by side: where the later ones are 0 and none is negative, four more bytes may belong to any of them,
// and no file tells to which. So long as the numbers stay so, it makes no difference either.

// The numbers that follow each other directly wherever they stand, of those that `isCandidate`; two or more each.
std::vector<std::vector<LayoutIndex>> FindIntegerRuns(const Layout& layout,
                                                      const std::function<bool(LayoutIndex)>& isCandidate);

struct IntegerWidths {
    std::vector<LayoutKind> m_Kinds; // Int or Int64; of all readings the one whose wide numbers come last
    std::vector<bool> m_IsOpen;      // not the same in all readings
    std::size_t m_FirstOpen = 0;     // the only open one that may be something else than 0
};

// The readings of a run of `size` numbers that `fits` allows, which says nothing where it cannot tell. Nothing where
// these differ in more than which numbers take 8 bytes.
std::optional<IntegerWidths> CompareWidths(std::size_t size,
                                           const std::function<std::optional<bool>(std::span<const LayoutKind>)>& fits);

} // namespace Corvid
