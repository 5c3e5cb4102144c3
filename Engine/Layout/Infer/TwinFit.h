#pragma once

#include <span>
#include <string_view>
#include <utility>
#include <vector>

#include "Engine/Layout/Infer/RecordDraft.h"

namespace Corvid {

// The values of a text sample in the order of the file, each with the field of the draft that it belongs to.
struct SampleValue {
    DraftField* m_Field;
    std::string_view m_Value; // empty: the rows of a matrix stand in m_Rows
    std::vector<std::string_view> m_Rows;
};

std::vector<std::vector<SampleValue>> ListValues(RecordDraft& draft, std::span<const SampleTree* const> trees);

// Whether the values of a text tell it from the other texts so well that no other file has the same by accident, when
// read by wrong kinds. By text.
std::vector<bool> FindDistinctTexts(std::span<const std::vector<SampleValue>> values);

// For each field of a text, the kinds that it can have if `bytes`, the values of a binary sample, hold the same
// content. Empty when they do not.
std::vector<std::pair<DraftField*, KindSet>> FitTwin(std::span<const SampleValue> values, std::string_view bytes);

} // namespace Corvid
