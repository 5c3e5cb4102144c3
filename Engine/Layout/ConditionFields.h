#pragma once

#include <vector>

#include "Engine/Layout/Layout.h"

namespace Corvid {

// Which fields the conditions of a layout ask for: the nearest earlier one of the label, and where that one need not be
// there, the one that it hides.
class ConditionFields {
public:
    // More would only serve to keep a machine busy.
    static constexpr std::size_t kMostCandidates = 64;

    explicit ConditionFields(const Layout& layout);

    // For a condition at the node `when` that names `field`: the nearest first; only the last is there always.
    std::vector<LayoutIndex> CandidatesOf(LayoutIndex when, LayoutIndex field) const;

private:
    const Layout& m_Layout;
    std::vector<LayoutIndex> m_Hidden; // of each value: the one that a condition would have found without it
};

} // namespace Corvid
