#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "Corvid/Explain/MergeConflicts.h"
#include "Corvid/Values/LargeBlockAllocator.h"

namespace Corvid {

using LineIndex = std::uint32_t;

// One physical line of a text archive, its line end taken off.
struct ArchiveLine {
    std::string_view m_Text;
    std::uint32_t m_Depth = 0;       // tabs in front of the label, or what they should be; a blank line has none
    std::uint32_t m_LabelStart = 0;  // bytes in front of the label
    std::uint32_t m_LabelLength = 0; // bytes; 0: a blank line
    LineIndex m_Next = 0;            // the next line that is not nested in this one: no deeper, and not blank

    bool IsBlank() const { return m_LabelLength == 0; }
    std::string_view GetLabel() const { return m_Text.substr(m_LabelStart, m_LabelLength); }
    std::size_t GetLabelEnd() const { return std::size_t{m_LabelStart} + m_LabelLength; }

    // Of a byte of the line: characters, from 1. A part of ill-formed UTF-8 is one character, as is a tab.
    std::uint64_t GetColumn(std::size_t byte) const;
};

// The lines behind the header of a text archive, blank ones at its end left out. A line is worked out of the text when
// it is asked for: a large file has millions of them, and each is asked for a few times in a row. Of a conflict that a
// merge has left, the lines of the first side are there.
class TextLines {
public:
    // UTF-8, without a byte-order mark; lives as long as this object.
    explicit TextLines(std::string_view text);
    TextLines(const TextLines&) = delete;
    TextLines& operator=(const TextLines&) = delete;

    LineIndex GetSize() const { return static_cast<LineIndex>(m_Next.size()); }
    ArchiveLine operator[](LineIndex index) const { return Find(index).m_Line; }

    // How deep each line stands, where that is not the number of its tabs.
    void SetDepths(std::vector<std::uint16_t> depths);

    // The text of a line cannot be relied on, which has been reported: no more of it.
    void MarkSpoilt(LineIndex index);
    bool IsSpoilt(LineIndex index) const { return index < m_Spoilt.size() && m_Spoilt[index]; }

    // Something about a line has been reported.
    void MarkReported(LineIndex index) { m_IsLastReported = m_IsLastReported || index + 1 == GetSize(); }
    bool IsLastReported() const { return m_IsLastReported; }

    // As people count: the header is line 1. Of the end: one more than the last line.
    std::uint64_t GetNumber(LineIndex index) const;
    const std::vector<MergeConflict>& GetConflicts() const { return m_Resolved.m_Conflicts; }

    const char* GetTextEnd() const { return m_Text.data() + m_Text.size(); }
    bool IsIndented() const { return m_IndentedCount > 0; } // whether any line stands behind a tab
    LineIndex GetIndentedCount() const { return m_IndentedCount; }
    bool IsLastLineCut() const { return m_IsLastLineCut; } // the text ends without a line end

private:
    static constexpr LineIndex kLinesPerMark = 16;
    static constexpr LineIndex kNoLine = 0xFFFFFFFF;

    struct FoundLine {
        LineIndex m_Index = kNoLine;
        std::size_t m_Behind = 0; // where the next one starts
        ArchiveLine m_Line;
    };

    const FoundLine& Find(LineIndex index) const;
    std::size_t FindStart(LineIndex index) const;
    void LinkLines();

    TextWithoutConflicts m_Resolved;                               // empty where there are none
    std::string_view m_Text;                                       // behind the header
    std::vector<LineIndex, LargeBlockAllocator<LineIndex>> m_Next; // by line
    std::vector<std::size_t> m_Marks;                              // where each kLinesPerMark-th line starts
    std::vector<std::uint16_t> m_Depths;                           // by line; empty: their tabs
    std::vector<bool> m_Spoilt;                                    // empty where none is
    mutable std::array<FoundLine, 4> m_Found;                      // the last ones, by index
    std::uint64_t m_EndNumber = 2;
    LineIndex m_IndentedCount = 0;
    bool m_IsLastLineCut = false;
    bool m_IsLastReported = false;
};

} // namespace Corvid
