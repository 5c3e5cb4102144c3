#pragma once

#include <string>
#include <vector>

#include "Engine/Layout/Infer/RecordDraft.h"
#include "Engine/Layout/LayoutBlocks.h"

namespace Corvid {

// A layout made from a draft, with what in the draft each node stands for.
struct DraftLayout {
    Layout m_Layout;
    std::vector<DraftField*> m_Fields;            // by node; null: no field of the draft
    std::vector<std::vector<DraftWhen*>> m_Whens; // by node, of each field that it holds
};

// Finds runs of fields that are one of `blocks`, and fixes their kinds.
void FindBlocks(RecordDraft& draft, const LayoutBlocks& blocks);

// `isAssumed`: no binary sample has told anything, so that decimals are taken for floats and digits for 32 bits without
// a mark. The draft must outlive the result.
// Records keep the names that they have in `known`, if there is one.
DraftLayout MakeLayout(RecordDraft& draft, const std::string& name, const LayoutBlocks& blocks, bool isAssumed,
                       const Layout* known);

} // namespace Corvid
