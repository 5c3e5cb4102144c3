#include "Engine/Layout/Infer/BlockRuns.h"

#include <algorithm>
#include <string>

namespace Corvid {

namespace {

// The number of fields of `record` from `first` on that are the nodes from `node` to `end` of a block; 0: they are not.
std::uint32_t MatchBlock(const RecordDraft& record, std::uint32_t first, const Layout& block, LayoutIndex node,
                         LayoutIndex end) {
    std::uint32_t field = first;
    for (; node < end; node = block[node].m_End, ++field) {
        if (field == record.m_Fields.size())
            return 0;
        const DraftField& candidate = record.m_Fields[field];
        const LayoutNode& wanted = block[node];
        if (candidate.m_Label != wanted.m_Label || candidate.m_Whens != record.m_Fields[first].m_Whens)
            return 0;
        if (wanted.m_Kind == LayoutKind::Record) {
            if (candidate.m_Shape != DraftShape::Record || candidate.m_Inner->m_Fields.empty() ||
                MatchBlock(*candidate.m_Inner, 0, block, node + 1, wanted.m_End) != candidate.m_Inner->m_Fields.size())
                return 0;
            continue;
        }
        const LayoutKind kind = wanted.m_Kind == LayoutKind::Word ? LayoutKind::String : wanted.m_Kind;
        if (candidate.m_Shape != DraftShape::Value || !IsValueKind(kind) || !candidate.m_Kinds.Has(kind))
            return 0;
        const auto isKnown = [&](const std::u16string& word) {
            return (wanted.m_IsInvalidAWord && word == u"Invalid") ||
                   std::find(wanted.m_Words.begin(), wanted.m_Words.end(), word) != wanted.m_Words.end();
        };
        if (wanted.m_Kind == LayoutKind::Word &&
            !std::all_of(candidate.m_Words.begin(), candidate.m_Words.end(), isKnown))
            return 0;
    }
    return field - first;
}

void FixKinds(RecordDraft& record, std::uint32_t first, const Layout& block, LayoutIndex node, LayoutIndex end) {
    for (; node < end; node = block[node].m_End, ++first) {
        DraftField& field = record.m_Fields[first];
        field.m_IsBuiltIn = true;
        if (block[node].m_Kind == LayoutKind::Record)
            FixKinds(*field.m_Inner, 0, block, node + 1, block[node].m_End);
        else if (block[node].m_Kind != LayoutKind::Word)
            field.m_Kinds = {block[node].m_Kind};
    }
}

} // namespace

BlockRun FindBlock(const RecordDraft& record, std::uint32_t first, const LayoutBlocks& blocks) {
    BlockRun longest;
    for (const auto& [name, block] : blocks) {
        const std::uint32_t size = MatchBlock(record, first, block, 0, block.GetSize());
        if (size > longest.m_Size)
            longest = {&block, size};
    }
    return longest;
}

void FindBlocks(RecordDraft& draft, const LayoutBlocks& blocks) {
    for (std::uint32_t index = 0; index < draft.m_Fields.size();) {
        const BlockRun run = FindBlock(draft, index, blocks);
        if (run.m_Block != nullptr) {
            FixKinds(draft, index, *run.m_Block, 0, run.m_Block->GetSize());
            index += run.m_Size;
            continue;
        }
        if (draft.m_Fields[index].m_Inner != nullptr)
            FindBlocks(*draft.m_Fields[index].m_Inner, blocks);
        ++index;
    }
}

} // namespace Corvid
