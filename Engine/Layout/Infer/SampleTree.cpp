#include "Engine/Layout/Infer/SampleTree.h"

#include "Engine/Archive/OwnedLabel.h"
#include "Engine/Archive/Text/TextLine.h"

namespace Corvid {

bool SampleTree::Fail(int line, std::string_view fault) {
    m_Lines.clear();
    m_Fault = fault;
    m_FaultLine = line;
    return false;
}

bool SampleTree::Parse(std::string_view text) {
    m_Lines.assign(1, SampleLine{});
    std::vector<std::uint32_t> open{0}; // by depth, the last line that was indented so far
    int lineNumber = 0;
    while (!text.empty()) {
        ++lineNumber;
        const std::size_t end = text.find('\n');
        std::string_view line = text.substr(0, end);
        text.remove_prefix(end == text.npos ? text.size() : end + 1);
        if (lineNumber == 1) {
            if (line.find("TXT") == line.npos)
                return Fail(1, "the first line is not that of a text archive");
            continue;
        }
        while (!line.empty() && IsWhiteSpace(line.back()))
            line.remove_suffix(1);
        if (line.empty())
            continue;
        if (line.find('\0') != line.npos)
            return Fail(lineNumber, "a NUL character");

        std::size_t depth = line.find_first_not_of('\t');
        line = SkipWhiteSpace(line);
        if (depth + 1 > open.size())
            depth = open.size() - 1;
        if (depth >= kMaxDepth)
            return Fail(lineNumber, "nested too deep");
        open.resize(depth + 1);
        const auto index = static_cast<std::uint32_t>(m_Lines.size());
        const std::uint32_t parent = open.back();
        if (parent != 0 && !m_Lines[parent].m_Value.empty())
            return Fail(lineNumber, "indented below a line that has a value");

        SampleLine& added = m_Lines.emplace_back();
        added.m_Parent = parent;
        added.m_End = index + 1;
        added.m_Line = lineNumber;
        if (line.front() == '[') {
            added.m_Value = line;
        } else {
            std::size_t labelEnd = 0;
            while (labelEnd < line.size() && !IsWhiteSpace(line[labelEnd]))
                ++labelEnd;
            added.m_Label = line.substr(0, labelEnd);
            added.m_Value = SkipWhiteSpace(line.substr(labelEnd));
            if (!OwnedLabel::IsLabel(added.m_Label))
                return Fail(lineNumber, "no label can be read here");
        }
        open.push_back(index);
    }
    for (auto index = static_cast<std::uint32_t>(m_Lines.size()); index-- > 1;) {
        SampleLine& parent = m_Lines[m_Lines[index].m_Parent];
        parent.m_End = parent.m_End < m_Lines[index].m_End ? m_Lines[index].m_End : parent.m_End;
    }
    m_Lines[0].m_End = GetSize();
    if (GetSize() < 2)
        return Fail(lineNumber, "nothing stands in it");
    return true;
}

} // namespace Corvid
