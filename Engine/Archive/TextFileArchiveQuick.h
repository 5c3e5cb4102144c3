#pragma once

// The inner pieces of TextFileArchive, for its own sources: a line of the shape that the archive writes itself, written
// and recognised without a loop. What is left per line is about what the bytes demand: a mask for the tabs, a word or
// two for the label, the number, and one 16-bit word for the line end.

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "Engine/Archive/LabelText.h"
#include "Engine/Archive/TextFileArchive.h"

namespace Corvid {

namespace TextLineShape {

inline constexpr int kTabBlock = 16;           // tabs stored at once
inline constexpr int kMostTabs = 4096;         // deeper objects are no further indented
inline constexpr int kMostQuickTabs = 8;       // one 64-bit word
inline constexpr std::size_t kLineRoom = 1024; // for a label and the longest value: four floats in the bits form
static_assert(OutputStream::kRoom >= kMostTabs + kTabBlock + kLineRoom);

inline char* Append(char* out, const char* text, std::size_t length) {
    std::memcpy(out, text, length);
    return out + length;
}

inline bool IsLineEnd(const char* position) {
    return std::memcmp(position, "\r\n", 2) == 0;
}

} // namespace TextLineShape

inline bool TextFileArchive::IsQuick(Label label) const {
    return m_IsQuick && LabelText::IsShort(label);
}

inline bool TextFileArchive::AreFloatsQuick(Label label) const {
    return m_AreFloatsQuick && LabelText::IsShort(label);
}

// Writing ------------------------------------------------------------------------------------------------------------

// The indentation, the label and a blank; the value goes to the returned place.
inline char* TextFileArchive::BeginQuickLine(Label label) {
    char* out = GetOutput().GetPosition();
    std::memset(out, '\t', TextLineShape::kTabBlock);
    out = LabelText::WriteShort(label, out + m_TabDepth);
    *out = ' ';
    return out + 1;
}

inline void TextFileArchive::EndLine(char* end) {
    GetOutput().Commit(TextLineShape::Append(end, "\r\n", 2));
}

// Reading ------------------------------------------------------------------------------------------------------------

// Around a nested object while reading.
inline void TextFileArchive::SetTabDepth(int depth) {
    constexpr std::uint64_t kTabs = 0x0909090909090909;
    m_TabDepth = depth;
    if (depth <= TextLineShape::kMostQuickTabs) [[likely]] {
        m_QuickTabMask = depth == 0 ? 0 : ~std::uint64_t{0} >> (64 - 8 * depth);
        m_QuickTabs = kTabs & m_QuickTabMask;
    } else {
        m_QuickTabMask = 0;
        m_QuickTabs = 1; // equals nothing that the mask lets through
    }
}

inline const char* TextFileArchive::FindQuick(Label label) const {
    const InputStream& input = GetInput();
    if (!IsQuick(label) || !input.HasLookahead()) [[unlikely]]
        return nullptr;
    const char* position = input.GetPosition();
    std::uint64_t tabs;
    std::memcpy(&tabs, position, sizeof tabs);
    if ((tabs & m_QuickTabMask) != m_QuickTabs) [[unlikely]]
        return nullptr;
    position += m_TabDepth;
    return LabelText::MatchShort(label, position);
}

inline bool TextFileArchive::TakeQuick(const char* valueEnd) {
    if (!TextLineShape::IsLineEnd(valueEnd)) [[unlikely]]
        return false;
    GetInput().SetPosition(valueEnd + 2);
    ++m_LinesTakenInPlace;
    m_CurrentLineUnread = false;
    return true;
}

} // namespace Corvid
