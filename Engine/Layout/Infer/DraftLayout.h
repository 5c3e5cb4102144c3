#pragma once

#include <string>
#include <utility>
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

// Makes layouts of one type from drafts, which must outlive the results.
class LayoutMaker {
public:
    // Records keep the names that they have in `known`, if there is one. It and the blocks must outlive the maker.
    LayoutMaker(std::string typeWord, const LayoutBlocks& blocks, const Layout* known)
        : m_TypeWord(std::move(typeWord)), m_Blocks(blocks), m_Known(known) {}

    // `isAssumed`: no binary sample has told anything, so that decimals are taken for floats and digits for 32 bits
    // without a mark.
    DraftLayout Make(RecordDraft& draft, bool isAssumed) const;

private:
    std::string m_TypeWord;
    const LayoutBlocks& m_Blocks;
    const Layout* m_Known;
};

} // namespace Corvid
