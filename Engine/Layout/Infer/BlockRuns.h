#pragma once

#include <cstdint>

#include "Engine/Layout/Infer/RecordDraft.h"
#include "Engine/Layout/LayoutBlocks.h"

namespace Corvid {

// Fields in a row that are one of the blocks that are built in.
struct BlockRun {
    const Layout* m_Block = nullptr; // null: they are none
    std::uint32_t m_Size = 0;        // fields of the draft
};

// The longest that begins with the field.
BlockRun FindBlock(const RecordDraft& record, std::uint32_t first, const LayoutBlocks& blocks);

// Finds all runs, and fixes their kinds.
void FindBlocks(RecordDraft& draft, const LayoutBlocks& blocks);

} // namespace Corvid
