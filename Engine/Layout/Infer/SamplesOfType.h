#pragma once

#include <map>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "Engine/Layout/Infer/LayoutInference.h"
#include "Engine/Layout/Infer/Sample.h"
#include "Engine/Layout/Infer/SampleTree.h"

namespace Corvid {

struct TextSample {
    const Sample* m_Sample;
    std::unique_ptr<SampleTree> m_Tree;
};

struct BinarySample {
    const Sample* m_Sample;
    std::string_view m_Values; // behind the word of the type
};

struct SamplesOfType {
    std::vector<TextSample> m_Texts;
    std::vector<BinarySample> m_Binaries;
};

// By the words of their types; at least one sample each. They stand in an order of their own, and each content once:
// what is concluded must not hang on how they were given. Those whose type cannot be told become problems.
std::map<std::string, SamplesOfType> SortByType(std::span<const Sample> samples,
                                                std::vector<InferenceProblem>& problems);

} // namespace Corvid
