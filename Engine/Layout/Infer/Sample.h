#pragma once

#include <string>
#include <string_view>

#include "Engine/Layout/Infer/SampleTree.h"

namespace Corvid {

// A file that a layout is inferred from. Text is UTF-8, with or without a mark; binary is what stands in the file. It
// must stay where it is while its tree is in use.
struct Sample {
    std::string m_Name; // for messages; nothing is concluded from it
    std::string m_Bytes;
};

inline constexpr std::string_view kBinaryHeader = "BIN\n";

inline bool IsBinarySample(const Sample& sample) {
    return sample.m_Bytes.starts_with("BIN");
}

} // namespace Corvid
