#include "Corvid/Explain/TextExplainer.h"

#include <algorithm>
#include <utility>

#include "Corvid/Explain/LineDepths.h"

namespace Corvid {

TextExplainer::TextExplainer(const Layout& layout, TextLines& lines, DiagnosticLog& log, ValueTree& tree)
    : m_Layout(layout), m_Lines(lines), m_Log(log), m_Tree(tree), m_Conditions(layout) {}

void TextExplainer::Run(bool isWholeLayout) {
    if (std::vector<std::uint16_t> depths = FindDepths(m_Layout, m_Lines); !depths.empty())
        m_Lines.SetDepths(std::move(depths));
    Record file;
    file.m_Labels = &LabelsOf(0, m_Layout.GetSize());
    for (const MergeConflict& conflict : m_Lines.GetConflicts())
        m_Log.Add(DiagnosticCode::UnknownLabel, DiagnosticPlace::AtLine(std::uint64_t{conflict.m_First} + 2, 1), {},
                  "a merge has left a conflict here, down to line " +
                      std::to_string(std::uint64_t{conflict.m_Last} + 2) + ": one of its sides has to go");
    ReadFields(0, m_Layout.GetSize(), file, nullptr);
    if (isWholeLayout)
        EndRecord(file);
    m_Tree.Finish();
}

void TextExplainer::ReadFields(LayoutIndex first, LayoutIndex end, Record& record, const ElementPlace* element) {
    for (LayoutIndex index = first; index < end; index = m_Layout[index].m_End) {
        const LayoutNode& node = m_Layout[index];
        if (node.m_Kind == LayoutKind::Use)
            ReadFields(index + 1, node.m_End, record, element);
        else if (node.m_Kind == LayoutKind::When)
            ReadWhen(index, end, record, element);
        else if (node.m_Kind == LayoutKind::Count)
            ReadList(index, record, element);
        else
            ReadField(index, record, element);
    }
}

// Where the condition's value is not known, what stands there decides; where several branches would take the line, it
// belongs to none that could be told, and goes without a word: its cause has been reported.
void TextExplainer::ReadWhen(LayoutIndex when, LayoutIndex end, Record& record, const ElementPlace* element) {
    const LayoutNode& node = m_Layout[when];
    const std::optional<bool> holds = m_Conditions.Holds(when);
    if (!holds)
        PassOverStrangers(record);
    if (holds ? !*holds : !StandsHere(when + 1, node.m_End)) {
        m_Conditions.Skip(when);
        return;
    }
    const bool isUnknown = node.m_Condition.m_Field == kNoLayoutIndex; // what stands there is all that tells
    for (LayoutIndex other = holds || isUnknown ? end : node.m_End; other < end; other = m_Layout[other].m_End) {
        const LayoutNode& otherNode = m_Layout[other];
        if (otherNode.m_Kind == LayoutKind::When && otherNode.m_Condition.m_Field == node.m_Condition.m_Field &&
            StandsHere(other + 1, otherNode.m_End)) {
            m_Line = m_Lines[m_Line].m_Next;
            return;
        }
    }
    ReadFields(when + 1, node.m_End, record, element);
}

void TextExplainer::ReadField(LayoutIndex index, Record& record, const ElementPlace* element) {
    m_Conditions.SetUnknown(index);
    const Place place = Find(index, record, element);
    if (place.m_Kind != Place::Kind::Missing)
        ReadFieldAt(index, place, record, element);
}

void TextExplainer::ReadFieldAt(LayoutIndex index, const Place& place, Record& record, const ElementPlace* element) {
    const LayoutNode& node = m_Layout[index];
    const bool isLabelLine =
        node.m_Kind == LayoutKind::Record || node.m_Kind == LayoutKind::Matrix33 || node.m_Kind == LayoutKind::Matrix44;
    const LineIndex resume = m_Line;
    std::uint32_t depth = record.m_Depth + 1;
    if (place.m_Kind == Place::Kind::Line) {
        m_Line = place.m_Line + 1;
        const ArchiveLine line = m_Lines[place.m_Line];
        const std::size_t labelEnd = place.m_LabelEnd != 0 ? place.m_LabelEnd : line.GetLabelEnd();
        TextFault fault;
        bool isWhole = true;
        if (isLabelLine) {
            isWhole = ReadTextEnd(line.m_Text, labelEnd, fault);
        } else {
            TextValue value;
            isWhole = ReadTextValue(node, line.m_Text, labelEnd, value, fault);
            if (isWhole || fault.m_Code == DiagnosticCode::TooLong)
                value.AddTo(m_Tree, node.m_Label);
            const bool canDecide = node.m_Kind == LayoutKind::Bool || IsWordOf(value.m_String, node);
            if (isWhole || (fault.m_IsBehindValue && canDecide))
                value.KeepFor(m_Conditions, index);
        }
        if (!isWhole && !place.m_IsMisspelt)
            Report(fault.m_Code, place.m_Line, fault.m_Position, m_Path.Of(m_Layout, node, element), fault.m_Message);
        if (m_Lines.IsIndented())
            depth = line.m_Depth + 1;
        if (isLabelLine && IsDoubled(place.m_Line, record, element)) {
            ReportUnknown(m_Line, record);
            const LineIndex end = FindEndOfNested(index, m_Line); // of a whole copy in front of what is nested
            const bool isCopy = end < m_Lines.GetSize() && m_Lines[end].m_Depth > line.m_Depth &&
                                m_Lines[end].GetLabel() == m_Lines[m_Line + 1].GetLabel();
            m_Line = isCopy ? end : m_Line + 1;
        }
    } else {
        depth = m_Lines[m_Line].m_Depth;
    }
    if (node.m_Kind == LayoutKind::Record)
        ReadNested(index, depth, record, element);
    else if (node.m_Kind == LayoutKind::Matrix33 || node.m_Kind == LayoutKind::Matrix44)
        ReadMatrix(index, depth, record, element);
    if (place.m_IsEarly)
        m_Line = std::max(resume, m_Line);
}

void TextExplainer::ReadNested(LayoutIndex index, std::uint32_t depth, Record& outer, const ElementPlace* element) {
    const LayoutNode& node = m_Layout[index];
    Record record;
    record.m_Labels = &LabelsOf(index + 1, node.m_End);
    record.m_Depth = m_Lines.IsIndented() ? depth : 0;
    const LineIndex second = m_Line < m_Lines.GetSize() ? NextText(m_Line) : m_Line;
    const bool goesOnAtDepth = second < m_Lines.GetSize() && m_Lines[second].m_Depth == depth &&
                               record.m_Labels->AsksFor(m_Lines[second].GetLabel());
    if (m_Line < m_Lines.GetSize() && m_Lines[m_Line].m_Depth > depth && !goesOnAtDepth &&
        record.m_Labels->AsksFor(m_Lines[m_Line].GetLabel()))
        record.m_Depth = m_Lines[m_Line].m_Depth;
    record.m_Outer = &outer;
    record.m_OuterNode = index;
    const std::size_t path = m_Path.Enter(m_Layout, node, element);
    record.m_OuterPath = path;
    m_Tree.BeginRecord(node.m_Label);
    ReadFields(index + 1, node.m_End, record, nullptr);
    EndRecord(record);
    m_Tree.EndRecord();
    m_Path.Leave(path);
}

// Whether the line of a record or matrix stands there twice, and what is nested behind the second: of a list only where
// its count does not ask for both.
bool TextExplainer::IsDoubled(LineIndex line, Record& record, const ElementPlace* element) {
    const std::string_view label = m_Lines[line].GetLabel();
    const LineIndex second = line + 1;
    if (!HasLabel(second, label) || m_Lines[second].m_Depth != m_Lines[line].m_Depth ||
        m_Lines[second].m_Next == second + 1 || m_Line != second)
        return false;
    return element == nullptr || !element->m_Count ||
           CountBelow(label, record) >= static_cast<std::size_t>(*element->m_Count) - element->m_Index;
}

// Where the next of the rows that are due stands; nothing: nowhere. Lines in front of all of them belong to nobody;
// where there are too few, the first other one is a row that has lost its bracket, or all it had.
std::optional<LineIndex> TextExplainer::FindRow(std::uint32_t depth, int due) const {
    std::optional<LineIndex> firstLine;
    std::optional<LineIndex> firstRow;
    int rows = 0;
    for (LineIndex index = m_Line; index < m_Lines.GetSize() && rows < due; ++index) {
        const ArchiveLine line = m_Lines[index];
        const bool isRow = IsRow(index);
        const bool isOutside = !line.IsBlank() && (!m_Lines.IsIndented() || line.m_Depth < depth);
        if (!isRow && isOutside && !IsRow(NextText(index)))
            break;
        firstLine = firstLine ? firstLine : index;
        if (isRow) {
            firstRow = firstRow ? firstRow : index;
            ++rows;
        }
    }
    return rows == due ? firstRow : firstLine;
}

// Rows are taken as they come: a spoilt one costs no other.
void TextExplainer::ReadMatrix(LayoutIndex index, std::uint32_t depth, Record& record, const ElementPlace* element) {
    const LayoutNode& node = m_Layout[index];
    const int size = node.m_Kind == LayoutKind::Matrix33 ? 3 : 4;
    TextValue value;
    value.m_Kind = node.m_Kind == LayoutKind::Matrix33 ? ValueKind::Matrix33 : ValueKind::Matrix44;
    bool isWhole = true;
    for (int row = 0; row < size; ++row) {
        const std::string which = "row " + std::to_string(row + 1) + " of " + std::to_string(size);
        const std::optional<LineIndex> found = FindRow(depth, size - row);
        if (found)
            PassOver(*found, index, record);
        if (!found) {
            if (isWhole && m_Line == m_Lines.GetSize())
                m_IsEndReported = true;
            if (isWhole)
                Report(DiagnosticCode::BadValue, m_Line, m_Line < m_Lines.GetSize() ? m_Lines[m_Line].m_LabelStart : 0,
                       m_Path.Of(m_Layout, node, element), which + " is missing");
            return;
        }
        const ArchiveLine line = m_Lines[m_Line];
        TextFault fault;
        if (!ReadTextRow(line.m_Text, line.m_LabelStart, size, value.m_Floats + row * size, fault)) {
            Report(fault.m_Code, m_Line, fault.m_Position, m_Path.Of(m_Layout, node, element),
                   which + ": " + fault.m_Message);
            isWhole = false;
        }
        ++m_Line;
    }
    if (isWhole)
        value.AddTo(m_Tree, node.m_Label);
}

// What is left of the record's lines, nobody asks for.
void TextExplainer::EndRecord(Record& record) {
    const bool isFile = record.m_Outer == nullptr;
    while (m_Line < m_Lines.GetSize()) {
        const ArchiveLine line = m_Lines[m_Line];
        if (line.IsBlank()) {
            ReportUnknown(m_Line++, record);
            continue;
        }
        if (!isFile) {
            if (line.m_Depth < record.m_Depth || !m_Lines.IsIndented())
                return;
            // An outer field that is indented too far.
            if (!record.m_Labels->AsksFor(line.GetLabel()) &&
                record.m_Outer->m_Labels->AsksForBehind(line.GetLabel(), record.m_OuterNode))
                return;
            if (StandsWithoutItsLine(record))
                return;
        }
        ReportUnknown(m_Line, record);
        m_Line = line.m_Next;
    }
}

// Whether what is left looks like the record that the outer one asks for next, whose own line is gone: its first lines.
bool TextExplainer::StandsWithoutItsLine(const Record& record) {
    LayoutIndex candidates[] = {m_Layout[record.m_OuterNode].m_End, kNoLayoutIndex};
    const LayoutIndex around = m_Layout[record.m_OuterNode].m_Parent;
    if (around != kNoLayoutIndex && m_Layout[around].m_Kind == LayoutKind::Count)
        candidates[1] = around + 1; // the next element of the list
    return std::any_of(std::begin(candidates), std::end(candidates), [&](LayoutIndex candidate) {
        while (candidate < m_Layout.GetSize() &&
               (m_Layout[candidate].m_Kind == LayoutKind::Use || m_Layout[candidate].m_Kind == LayoutKind::When))
            ++candidate;
        if (candidate >= m_Layout.GetSize() || m_Layout[candidate].m_Kind != LayoutKind::Record)
            return false;
        const std::vector<std::string_view>& labels = LabelsOf(candidate + 1, m_Layout[candidate].m_End).GetAll();
        return labels.size() > 1 && HasLabel(m_Line, labels[0]) && HasLabel(m_Lines[m_Line].m_Next, labels[1]);
    });
}

} // namespace Corvid
