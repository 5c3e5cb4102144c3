#pragma once

#include <vector>

#include "Engine/Layout/Infer/DraftLayout.h"
#include "Engine/Layout/Infer/LayoutInference.h"

namespace Corvid {

// Every mark of a layout in the words of the samples that it comes from.
std::vector<InferredMark> DescribeMarks(const DraftLayout& made);

} // namespace Corvid
