#pragma once

#include <map>
#include <string>
#include <vector>

#include "Engine/Layout/Layout.h"
#include "Engine/Layout/LayoutBlocks.h"

namespace Corvid {

// What stands behind '#' in a layout as text, one line each.
struct LayoutComments {
    std::vector<std::string> m_Head;             // above the first definition
    std::map<LayoutIndex, std::string> m_Fields; // behind a field; of one in a named record, at its first use
};

// The layout as text, which parses to the same fields, conditions and doubts. Blocks of the table stand there by name,
// named records once, before their first use; a block or record that has the name of a different one is spelled out.
std::string WriteLayoutText(const Layout& layout, const LayoutBlocks& blocks, const LayoutComments& comments = {});

// Whether two ranges of whole nodes describe the same: labels, kinds, words, conditions, doubts.
bool AreNodesSame(const Layout& a, LayoutIndex aFirst, LayoutIndex aEnd, const Layout& b, LayoutIndex bFirst,
                  LayoutIndex bEnd);

} // namespace Corvid
