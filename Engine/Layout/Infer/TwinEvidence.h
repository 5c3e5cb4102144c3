#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "Engine/Layout/Infer/DraftLayout.h"
#include "Engine/Layout/Infer/RecordDraft.h"
#include "Engine/Layout/Infer/SamplesOfType.h"
#include "Engine/Layout/Infer/TwinFit.h"

namespace Corvid {

// What binary samples tell of a draft because they have the content of a text sample, whatever their names. Samples and
// draft must outlive it.
class TwinEvidence {
public:
    TwinEvidence(RecordDraft& draft, std::span<const SampleTree* const> trees, std::span<const BinarySample> binaries);

    // Leaves the fields the kinds by which every twin has the content of a text.
    void NarrowKinds();

    // Integers side by side that only differ in which of them takes 8 bytes. `made` is the draft as a layout.
    void SettleWidths(const DraftLayout& made);

    // Before kinds are narrowed every binary sample counts as a twin.
    std::size_t GetTwinCount() const { return m_Twins.size(); }
    const std::vector<const BinarySample*>& GetOthers() const { return m_Others; }

private:
    // A binary sample and the text samples that it may be a twin of.
    struct Twin {
        const BinarySample* m_Binary;
        std::vector<std::size_t> m_Texts;
    };

    bool NarrowBy(Twin& twin) const;
    bool DoAllFit() const;
    void SettleWidthsOf(std::span<DraftField* const> run) const;

    std::vector<std::vector<SampleValue>> m_Values; // by text
    std::vector<Twin> m_Twins;
    std::vector<const BinarySample*> m_Others;
};

} // namespace Corvid
