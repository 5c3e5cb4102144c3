#include "Corvid/Explain/TextLines.h"

#include <algorithm>
#include <utility>

#include "Engine/Archive/Text/TextLine.h"
#include "Engine/String/Unicode.h"

namespace Corvid {

namespace {

ArchiveLine MakeLine(std::string_view text) {
    if (text.ends_with('\r'))
        text.remove_suffix(1);
    ArchiveLine line;
    line.m_Text = text;
    std::size_t position = 0;
    while (position < text.size() && IsWhiteSpace(text[position]))
        line.m_Depth += text[position++] == '\t' ? 1 : 0;
    line.m_LabelStart = static_cast<std::uint32_t>(position);
    while (position < text.size() && !IsWhiteSpace(text[position]))
        ++position;
    line.m_LabelLength = static_cast<std::uint32_t>(position - line.m_LabelStart);
    return line;
}

// Takes a line and its end off the front.
std::string_view TakeLine(std::string_view& text) {
    const std::size_t end = text.find('\n');
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(end == text.npos ? text.size() : end + 1);
    return line;
}

} // namespace

std::uint64_t ArchiveLine::GetColumn(std::size_t byte) const {
    const char* position = m_Text.data();
    const char* const end = position + m_Text.size();
    const char* const wanted = position + std::min(byte, m_Text.size());
    std::uint64_t column = 1;
    while (position < wanted) {
        DecodeUtf8(position, end);
        if (position <= wanted)
            ++column;
    }
    return column;
}

TextLines::TextLines(std::string_view text) {
    TakeLine(text); // the header
    m_EndNumber = static_cast<std::uint64_t>(std::count(text.begin(), text.end(), '\n')) + 2 +
                  (!text.empty() && !text.ends_with('\n') ? 1 : 0);
    m_Resolved = LeaveOutConflicts(text);
    if (!m_Resolved.m_Conflicts.empty())
        text = m_Resolved.m_Text;
    m_Text = text;
    m_IsLastLineCut = !text.empty() && !text.ends_with('\n');
    const auto size = static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')) + (m_IsLastLineCut ? 1 : 0);
    m_Next.resize(size);
    m_Marks.reserve(size / kLinesPerMark + 1);
    LinkLines();
}

std::uint64_t TextLines::GetNumber(LineIndex index) const {
    if (index >= GetSize())
        return m_EndNumber;
    const std::vector<LinesLeftOut>& leftOut = m_Resolved.m_LeftOut;
    const auto behind = std::upper_bound(leftOut.begin(), leftOut.end(), index,
                                         [](LineIndex line, const LinesLeftOut& part) { return line < part.m_Index; });
    return std::uint64_t{index} + 2 + (behind != leftOut.begin() ? (behind - 1)->m_Count : 0);
}

void TextLines::MarkSpoilt(LineIndex index) {
    m_Spoilt.resize(GetSize());
    m_Spoilt[index] = true;
    MarkReported(index);
}

const TextLines::FoundLine& TextLines::Find(LineIndex index) const {
    FoundLine& found = m_Found[index % m_Found.size()];
    if (found.m_Index == index)
        return found;
    const std::size_t start = FindStart(index);
    std::string_view rest = m_Text.substr(start);
    found.m_Line = MakeLine(TakeLine(rest));
    found.m_Line.m_Next = m_Next[index];
    if (!m_Depths.empty())
        found.m_Line.m_Depth = m_Depths[index];
    found.m_Behind = m_Text.size() - rest.size();
    found.m_Index = index;
    return found;
}

std::size_t TextLines::FindStart(LineIndex index) const {
    const FoundLine& before = m_Found[(index - 1) % m_Found.size()];
    if (index > 0 && before.m_Index == index - 1)
        return before.m_Behind;
    std::string_view rest = m_Text.substr(m_Marks[index / kLinesPerMark]);
    for (LineIndex line = 0; line < index % kLinesPerMark; ++line)
        TakeLine(rest);
    return m_Text.size() - rest.size();
}

void TextLines::SetDepths(std::vector<std::uint16_t> depths) {
    m_Depths = std::move(depths);
    m_Found = {};
    LinkLines();
}

void TextLines::LinkLines() {
    m_Marks.clear();
    m_IndentedCount = 0;
    struct OpenLine {
        LineIndex m_Index;
        std::uint32_t m_Depth;
    };
    std::vector<OpenLine> open; // each deeper than the one before
    LineIndex behindLast = 0;   // line that is not blank
    std::string_view rest = m_Text;
    for (LineIndex index = 0; index < GetSize(); ++index) {
        if (index % kLinesPerMark == 0)
            m_Marks.push_back(m_Text.size() - rest.size());
        ArchiveLine line = MakeLine(TakeLine(rest));
        if (!m_Depths.empty() && index < m_Depths.size())
            line.m_Depth = m_Depths[index];
        m_IndentedCount += line.m_Depth > 0 ? 1 : 0;
        if (!line.IsBlank() || line.m_Text.find('\0') != std::string_view::npos)
            behindLast = index + 1;
        if (line.IsBlank()) {
            m_Next[index] = index + 1;
            continue;
        }
        for (; !open.empty() && line.m_Depth <= open.back().m_Depth; open.pop_back())
            m_Next[open.back().m_Index] = index;
        open.push_back({index, line.m_Depth});
    }
    m_Next.resize(behindLast);
    for (const OpenLine& line : open)
        m_Next[line.m_Index] = GetSize();
}

} // namespace Corvid
