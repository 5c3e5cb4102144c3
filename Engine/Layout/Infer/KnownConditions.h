#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "Engine/Layout/Infer/Deciders.h"
#include "Engine/Layout/Infer/KnownLayout.h"
#include "Engine/Layout/Infer/Presence.h"
#include "Engine/Layout/Infer/RecordDraft.h"

namespace Corvid {

// The conditions of a layout that was given, in the draft that continues it. What it says without a doubt stays; what
// it says with one stays unless the samples say more.
class KnownConditions {
public:
    KnownConditions(RecordDraft& draft, const Layout& layout, std::span<const SampleTree* const> trees)
        : m_Layout(layout), m_Trees(trees) {
        FindFields(draft);
    }

    // Puts a field of the layout under its conditions.
    void Put(RecordDraft& record, std::uint32_t field, const std::vector<Decider>& deciders) const;

private:
    void FindFields(RecordDraft& record);
    std::vector<LayoutIndex> WhensAround(LayoutIndex field, const RecordDraft& record) const;
    DraftCondition Translate(const LayoutCondition& condition) const;
    std::optional<DraftWhen> TakeOver(const RecordDraft& record, LayoutIndex when, const Presence& asked) const;
    std::optional<DraftWhen> TakeOverDoubtful(const RecordDraft& record, LayoutIndex when, const Presence& asked) const;

    const Layout& m_Layout;
    std::span<const SampleTree* const> m_Trees;
    std::map<LayoutIndex, std::pair<RecordDraft*, std::uint32_t>> m_Fields; // of the draft, by those of the layout
};

} // namespace Corvid
