#include "Corvid/Explain/TextLines.h"

#include <algorithm>

#include "Engine/Archive/Text/TextLine.h"
#include "Engine/String/Unicode.h"

namespace Corvid {

namespace {

constexpr std::uint32_t kMostLabelBytes = 0x3FFFFFFF; // such a line is far too long

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
    line.m_LabelLength = static_cast<std::uint32_t>(position - line.m_LabelStart) & kMostLabelBytes;
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

TextLines::TextLines(std::string_view text) : m_TextEnd(text.data() + text.size()) {
    TakeLine(text); // the header
    m_Lines.reserve(static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')) + 1);
    m_IsLastLineCut = !text.empty() && !text.ends_with('\n');
    while (!text.empty()) {
        m_Lines.push_back(MakeLine(TakeLine(text)));
        m_IsIndented = m_IsIndented || m_Lines.back().m_Depth > 0;
    }
    m_EndNumber = m_Lines.size() + 2;
    while (!m_Lines.empty() && m_Lines.back().IsBlank() && m_Lines.back().m_Text.find('\0') == std::string_view::npos)
        m_Lines.pop_back();
    LinkLines();
}

void TextLines::LinkLines() {
    std::vector<LineIndex> open; // each deeper than the one before
    for (LineIndex index = 0; index < GetSize(); ++index) {
        if (m_Lines[index].IsBlank()) {
            m_Lines[index].m_Next = index + 1;
            continue;
        }
        while (!open.empty() && m_Lines[index].m_Depth <= m_Lines[open.back()].m_Depth) {
            m_Lines[open.back()].m_Next = index;
            open.pop_back();
        }
        open.push_back(index);
    }
    for (const LineIndex index : open)
        m_Lines[index].m_Next = GetSize();
}

} // namespace Corvid
