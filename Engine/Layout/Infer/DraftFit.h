#pragma once

#include <cstdint>

#include "Engine/Layout/Infer/BinaryFit.h"
#include "Engine/Layout/Infer/DraftLayout.h"

namespace Corvid {

// What is open of a draft, which was made to this layout, as a question to binary samples. `made` must outlive it.
FitQuestion AskAbout(const DraftLayout& made, std::uint64_t& stepsLeft);

// Takes over into the draft of `made` what the answer to this question settles, and, where it is certain, what the
// binary samples show beyond.
void TakeOver(const FitAnswer& answer, const DraftLayout& made);

} // namespace Corvid
