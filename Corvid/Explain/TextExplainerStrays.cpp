#include "Corvid/Explain/TextExplainer.h"

#include <algorithm>

namespace Corvid {

// Blank lines, and shallower ones behind which the record goes on: someone has put them there.
void TextExplainer::SkipStrays(Record& record, LayoutIndex wanted) {
    while (m_Line < m_Lines.GetSize()) {
        if (m_Lines[m_Line].IsBlank()) {
            ReportUnknown(m_Line++, record);
            continue;
        }
        const std::optional<LineIndex> end = FindEndOfStray(record, wanted);
        if (!end)
            return;
        if (!m_Taken.contains(m_Line))
            ReportStray(record);
        const std::uint32_t depth = m_Lines[m_Line].m_Depth;
        for (Record* around = &record; around != nullptr && around->m_Depth > depth; around = around->m_Outer)
            around->m_Lines.reset(); // they were gathered up to here
        m_Line = *end;
    }
}

// Behind the current line and what belongs to it, if the record goes on there.
std::optional<LineIndex> TextExplainer::FindEndOfStray(Record& record, LayoutIndex wanted) {
    const ArchiveLine line = m_Lines[m_Line];
    const std::string_view label = line.GetLabel();
    LineIndex end = NextText(m_Line);
    const bool isForTwo =
        label == m_Layout[wanted].m_Label && HasLabel(end, label) && m_Lines[end].m_Depth == record.m_Depth;
    if (line.m_Depth >= record.m_Depth || (record.m_Labels->AsksForBehind(label, wanted) && !isForTwo))
        return std::nullopt;
    bool isKnown = record.m_Labels->AsksFor(label);
    for (const Record* around = record.m_Outer; around != nullptr; around = around->m_Outer) {
        const std::vector<LayoutIndex>* const nodes = around->m_Labels->FindNodes(label);
        if (nodes == nullptr)
            continue;
        isKnown = true;
        end = FindEndOfStrayRecord(*nodes, record, wanted);
        break;
    }
    if (end >= m_Lines.GetSize() || m_Lines[end].m_Depth < record.m_Depth)
        return std::nullopt;
    const std::string_view next = m_Lines[end].GetLabel();
    const bool goesOn = isKnown ? record.m_Labels->AsksForBehind(next, wanted)
                                : record.m_Labels->AsksFor(next) || BeginsNested(wanted, end);
    return goesOn ? std::optional(end) : std::nullopt;
}

// Whether the lines nested in the wanted record, or in an element of the wanted list, begin at `line`.
bool TextExplainer::BeginsNested(LayoutIndex wanted, LineIndex line) {
    const LayoutIndex node = m_Layout[wanted].m_Kind == LayoutKind::Count ? wanted + 1 : wanted;
    if (node >= m_Layout.GetSize() || m_Layout[node].m_Kind != LayoutKind::Record)
        return false;
    const std::vector<std::string_view>& labels = LabelsOf(node + 1, m_Layout[node].m_End).GetAll();
    return labels.size() > 1 && HasLabel(line, labels[0]) && HasLabel(NextText(line), labels[1]);
}

// Behind the current line, which may open one of these nodes, and what belongs to it: nothing does where the record
// goes on right behind it, in the midst of what could be nested.
LineIndex TextExplainer::FindEndOfStrayRecord(const std::vector<LayoutIndex>& nodes, const Record& record,
                                              LayoutIndex wanted) {
    const LineIndex next = NextText(m_Line);
    LineIndex end = next;
    for (const LayoutIndex node : nodes) {
        const bool isRecord = m_Layout[node].m_Kind == LayoutKind::Record;
        const bool isAlone = isRecord && next < m_Lines.GetSize() && m_Lines[next].m_Depth == record.m_Depth &&
                             record.m_Labels->AsksForBehind(m_Lines[next].GetLabel(), wanted) &&
                             !HasLabel(next, LabelsOf(node + 1, m_Layout[node].m_End).GetFirst());
        end = std::max(end, isAlone ? next : FindEndOfNested(node, m_Line));
    }
    return end;
}

// How far the lines behind the one of a record are its own: its fields, in their order.
LineIndex TextExplainer::FindEndOfNested(LayoutIndex owner, LineIndex line) {
    const LayoutNode& node = m_Layout[owner];
    const std::uint32_t depth = m_Lines[line].m_Depth;
    LineIndex end = NextText(line);
    if (node.m_Kind == LayoutKind::Matrix33 || node.m_Kind == LayoutKind::Matrix44) {
        for (int rows = node.m_Kind == LayoutKind::Matrix33 ? 3 : 4; rows > 0 && IsRow(end); --rows)
            end = NextText(end);
        return end;
    }
    if (node.m_Kind != LayoutKind::Record)
        return end;
    const RecordLabels& labels = LabelsOf(owner + 1, node.m_End);
    LayoutIndex behind = owner + 1;
    while (end < m_Lines.GetSize() && m_Lines[end].m_Depth > depth) {
        const std::vector<LayoutIndex>* const nodes = labels.FindNodes(m_Lines[end].GetLabel());
        if (nodes == nullptr)
            return end;
        const auto found = std::lower_bound(nodes->begin(), nodes->end(), behind);
        if (found == nodes->end())
            return end;
        behind = *found + 1;
        for (LayoutIndex list = m_Layout[*found].m_Parent; list != kNoLayoutIndex && list > owner;
             list = m_Layout[list].m_Parent) {
            if (m_Layout[list].m_Kind == LayoutKind::Count)
                behind = list + 1; // the next element
        }
        const LineIndex nested = end;
        for (auto branch = found; branch != nodes->end(); ++branch) // under different conditions
            end = std::max(end, FindEndOfNested(*branch, nested));
    }
    return end;
}

// Of a line that a record around asks for. A value that stands nowhere else comes too early: it is read when it is due.
void TextExplainer::ReportStray(Record& record) {
    const ArchiveLine line = m_Lines[m_Line];
    const std::string_view label = line.GetLabel();
    for (Record* inner = &record; inner->m_Outer != nullptr; inner = inner->m_Outer) {
        Record& around = *inner->m_Outer;
        const std::vector<LayoutIndex>* const nodes = around.m_Labels->FindNodes(label);
        if (nodes == nullptr)
            continue;
        const LayoutNode& node = m_Layout[nodes->back()];
        const bool isElement = node.m_Parent != kNoLayoutIndex && m_Layout[node.m_Parent].m_Kind == LayoutKind::Count;
        const bool isEarly = IsValueKind(node.m_Kind) && !isElement &&
                             nodes->back() >= m_Layout[inner->m_OuterNode].m_End && CountBelow(label, around) == 1;
        if (isEarly)
            around.m_Early[label].push_back(m_Line);
        Report(isEarly ? DiagnosticCode::OutOfOrder : DiagnosticCode::UnknownLabel, m_Line, line.m_LabelStart,
               m_Path.OfLabel(label, inner->m_OuterPath),
               "stands in the midst of " + m_Path.OfRecord() + ", which goes on behind it");
        return;
    }
    ReportUnknown(m_Line, record);
}

} // namespace Corvid
