#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "Corvid/Values/LargeBlockAllocator.h"

namespace Corvid {

using LineIndex = std::uint32_t;

// One physical line of a text archive, its line end taken off.
struct ArchiveLine {
    std::string_view m_Text;
    std::uint32_t m_Depth = 0;            // tabs in front of the label; a blank line has none
    std::uint32_t m_LabelStart = 0;       // bytes in front of the label
    LineIndex m_Next = 0;                 // the next line that is not nested in this one: no deeper, and not blank
    std::uint32_t m_LabelLength : 30 = 0; // bytes; 0: a blank line
    bool m_IsSpoilt : 1 = false;          // its text cannot be relied on, which has been reported: no more of it
    bool m_IsReported : 1 = false;        // something about it has been reported

    bool IsBlank() const { return m_LabelLength == 0; }
    std::string_view GetLabel() const { return m_Text.substr(m_LabelStart, m_LabelLength); }
    std::size_t GetLabelEnd() const { return m_LabelStart + m_LabelLength; }

    // Of a byte of the line: characters, from 1. A part of ill-formed UTF-8 is one character, as is a tab.
    std::uint64_t GetColumn(std::size_t byte) const;
};

// The lines behind the header of a text archive, blank ones at its end left out.
class TextLines {
public:
    // UTF-8, without a byte-order mark; lives as long as this object.
    explicit TextLines(std::string_view text);

    LineIndex GetSize() const { return static_cast<LineIndex>(m_Lines.size()); }
    const ArchiveLine& operator[](LineIndex index) const { return m_Lines[index]; }
    void MarkSpoilt(LineIndex index) { m_Lines[index].m_IsSpoilt = m_Lines[index].m_IsReported = true; }
    void MarkReported(LineIndex index) { m_Lines[index].m_IsReported = true; }
    bool IsReported(LineIndex index) const { return m_Lines[index].m_IsReported; }

    // As people count: the header is line 1. Of the end: one more than the last line.
    std::uint64_t GetNumber(LineIndex index) const {
        return index < GetSize() ? std::uint64_t{index} + 2 : m_EndNumber;
    }

    const char* GetTextEnd() const { return m_TextEnd; }
    bool IsIndented() const { return m_IsIndented; }       // whether any line stands behind a tab
    bool IsLastLineCut() const { return m_IsLastLineCut; } // the text ends without a line end

private:
    void LinkLines();

    std::vector<ArchiveLine, LargeBlockAllocator<ArchiveLine>> m_Lines;
    const char* m_TextEnd;
    std::uint64_t m_EndNumber = 2;
    bool m_IsIndented = false;
    bool m_IsLastLineCut = false;
};

} // namespace Corvid
