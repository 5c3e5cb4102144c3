#pragma once

#include <vector>

#include "Engine/Layout/Infer/DraftLayout.h"
#include "Engine/Layout/Infer/RecordDraft.h"
#include "Engine/Layout/Infer/SamplesOfType.h"

namespace Corvid {

struct LoneBinaries {
    std::vector<const BinarySample*> m_Unfit; // that no layout reads which goes with the text samples
    bool m_MayAssume = true;                  // they say nothing against the usual kinds of decimals and digits
};

// Reads binary samples without a twin by what is open of the draft, as many at a time as can be read side by side, and
// takes over into the draft what they settle.
LoneBinaries ReadLoneBinaries(std::vector<const BinarySample*> files, RecordDraft& draft, const LayoutMaker& maker);

} // namespace Corvid
