#pragma once

#include <cstddef>
#include <cstring>

#include "Engine/Archive/LabelText.h"
#include "Engine/Archive/Text/TextFileArchive.h"

// The pieces that every written line is made of, for the sources of TextFileArchive. What is left of a line without a
// loop is about what its bytes demand: a block of tabs, a word or two for the label, the number, the line end.

namespace Corvid {

namespace TextLineShape {

inline constexpr int kTabBlock = 16;           // tabs stored at once
inline constexpr int kMostTabs = 4096;         // deeper objects are no further indented
inline constexpr std::size_t kLineRoom = 1024; // for a label and the longest value: four floats in the bits form
static_assert(OutputStream::kRoom >= kMostTabs + kTabBlock + kLineRoom);

inline char* Append(char* out, const char* text, std::size_t length) {
    std::memcpy(out, text, length);
    return out + length;
}

} // namespace TextLineShape

inline char* TextFileArchive::BeginFastLine(Label label) {
    char* out = GetOutput().GetPosition();
    std::memset(out, '\t', TextLineShape::kTabBlock);
    out = LabelText::WriteShort(label, out + m_TabDepth);
    *out = ' ';
    return out + 1;
}

inline char* TextFileArchive::BeginLine(Label label) {
    return IsFast(label) ? BeginFastLine(label) : BeginAnyLine(label);
}

inline void TextFileArchive::EndLine(char* end) {
    GetOutput().Commit(TextLineShape::Append(end, "\r\n", 2));
}

inline void TextFileArchive::UpdateFast() {
    m_HasFewTabs = m_TabDepth <= TextLineShape::kTabBlock;
    m_AreFloatsFast = m_HasFewTabs && m_FloatForm == FloatForm::SixDecimals;
}

} // namespace Corvid
