#include "Corvid/Explain/TextExplainer.h"

#include <algorithm>

#include "Corvid/Explain/BadCount.h"

namespace Corvid {

void TextExplainer::ReadList(LayoutIndex index, Record& record, const ElementPlace* outer) {
    ReadListAt(index, Find(index, record, outer), record, outer);
}

void TextExplainer::ReadListAt(LayoutIndex index, const Place& place, Record& record, const ElementPlace* outer) {
    const LayoutNode& node = m_Layout[index];
    bool isBad = false;
    const std::optional<std::int32_t> count = ReadCount(index, place, outer, isBad);
    if (index + 1 == node.m_End) { // only 0 is known
        if (count && *count != 0 && !isBad)
            Report(DiagnosticCode::BadCount, place.m_Line, m_Lines[place.m_Line].m_LabelStart,
                   m_Path.Of(m_Layout, node, outer), std::to_string(*count) + ", and nobody knows what an element is");
        m_Tree.AddInt(node.m_Label, 0);
        m_Tree.BeginList({});
        m_Tree.EndList();
        return;
    }

    const ValueIndex list = m_Tree.GetSize();
    m_Tree.AddInt(node.m_Label, 0);
    m_Tree.BeginList(ElementLabels(m_Layout, index));
    if (isBad) {
        m_Tree.EndList();
        PassOverElements(index, record, false, 0);
        return;
    }

    ElementPlace element;
    element.m_List = index;
    element.m_Count = count;
    element.m_IsNamedByCount = record.m_Labels->IsNamedByCount(index) && ElementLabels(m_Layout, index).size() == 1;
    element.m_OuterIndices = outer != nullptr ? outer->GetIndices() : "";
    LayoutIndex first = index + 1;
    bool isFirstConditional = false;
    for (; m_Layout[first].m_Kind == LayoutKind::Use || m_Layout[first].m_Kind == LayoutKind::When; ++first)
        isFirstConditional |= m_Layout[first].m_Kind == LayoutKind::When;
    bool isComplete = true;
    for (; !count || element.m_Index < static_cast<std::uint32_t>(*count); ++element.m_Index) {
        SkipStrays(record, index);
        const bool standsHere = StandsInElement(index);
        Place firstPlace;
        if (!isFirstConditional)
            firstPlace = FindElement(first, record, element, true);
        const bool isMissing = firstPlace.m_Kind == Place::Kind::Missing;
        if (isFirstConditional && (standsHere || (count && !AlwaysHasField(index)))) {
            const LineIndex before = m_Line;
            ReadElement(index, nullptr, record, element);
            if (!count && m_Line == before)
                break;
            continue;
        }
        if (isMissing && StandsInElement(index)) {
            ReportMissing(first, &element, "");
        } else if (isMissing) {
            isComplete = false;
            NoteMismatch(index, record);
            if (count)
                ReportMissing(first, &element,
                              "; " + node.m_Label + " says " + std::to_string(*count) + ", and " +
                                  std::to_string(element.m_Index) + (element.m_Index == 1 ? " stands" : " stand") +
                                  " here");
            break;
        }
        ReadElement(index, &firstPlace, record, element);
    }
    m_Tree.EndList();
    m_Tree.SetCount(list, static_cast<std::int32_t>(element.m_Index));
    if (isComplete && count)
        PassOverElements(index, record, true, *count);
}

// The count; nothing where it is missing or cannot be read: then the elements tell.
std::optional<std::int32_t> TextExplainer::ReadCount(LayoutIndex index, const Place& place, const ElementPlace* outer,
                                                     bool& isBad) {
    const LayoutNode& node = m_Layout[index];
    if (place.m_Kind != Place::Kind::Line)
        return std::nullopt;
    const ArchiveLine line = m_Lines[place.m_Line];
    if (!place.m_IsEarly)
        m_Line = place.m_Line + 1;
    TextValue value;
    TextFault fault;
    const std::string field = m_Path.Of(m_Layout, node, outer);
    const std::size_t labelEnd = place.m_LabelEnd != 0 ? place.m_LabelEnd : line.GetLabelEnd();
    if (!ReadTextValue(node, line.m_Text, labelEnd, value, fault)) {
        if (!place.m_IsMisspelt)
            Report(fault.m_Code, place.m_Line, fault.m_Position, field, fault.m_Message);
        return std::nullopt;
    }
    const std::size_t start = line.m_Text.find_first_not_of(" \t\v\f\r", labelEnd);
    const auto rest = static_cast<std::uint64_t>(m_Lines.GetTextEnd() - (line.m_Text.data() + line.m_Text.size()));
    const std::uint64_t smallest = std::max<std::uint64_t>(SmallestElementLetters(index + 1, node.m_End) / 2, 1);
    const std::string why = ExplainBadCount(node, value.m_Integer, rest / smallest);
    if (!why.empty()) {
        Report(DiagnosticCode::BadCount, place.m_Line, start, field, why);
        isBad = true;
    }
    return static_cast<std::int32_t>(value.m_Integer);
}

void TextExplainer::ReadElement(LayoutIndex list, const Place* first, Record& record, const ElementPlace& element) {
    bool isFirst = first != nullptr;
    const LayoutNode& listNode = m_Layout[list];
    // The group of one element; what stands under a condition or in a block is read with it.
    const auto readGroup = [&](const auto& self, LayoutIndex begin, LayoutIndex end) -> void {
        for (LayoutIndex index = begin; index < end; index = m_Layout[index].m_End) {
            const LayoutNode& node = m_Layout[index];
            if (node.m_Kind == LayoutKind::Use) {
                self(self, index + 1, node.m_End);
            } else if (node.m_Kind == LayoutKind::When) {
                const std::optional<bool> holds = m_Conditions.Holds(index);
                if (holds && *holds)
                    self(self, index + 1, node.m_End);
                else
                    ReadWhen(index, end, record, &element);
            } else if (isFirst) {
                isFirst = false;
                m_Conditions.SetUnknown(index);
                if (node.m_Kind == LayoutKind::Count)
                    ReadListAt(index, *first, record, &element);
                else
                    ReadFieldAt(index, *first, record, &element);
            } else if (node.m_Kind == LayoutKind::Count) {
                ReadList(index, record, &element);
            } else {
                m_Conditions.SetUnknown(index);
                const Place place = FindElement(index, record, element, false);
                if (place.m_Kind != Place::Kind::Missing)
                    ReadFieldAt(index, place, record, &element);
            }
        }
    };
    readGroup(readGroup, list + 1, listNode.m_End);
}

// Whether an element has a field that no condition can take away.
bool TextExplainer::AlwaysHasField(LayoutIndex list) const {
    for (LayoutIndex index = list + 1; index < m_Layout[list].m_End; index = m_Layout[index].m_End) {
        if (m_Layout[index].m_Kind != LayoutKind::When)
            return true;
    }
    return false;
}

// Elements that stand there beyond the count.
void TextExplainer::PassOverElements(LayoutIndex list, Record& record, bool isReported, std::int32_t count) {
    if (isReported && StandsForNextList(list, record))
        return;
    while (m_Line < m_Lines.GetSize() && StandsInElement(list) &&
           (m_Lines[m_Line].m_Depth >= record.m_Depth || !m_Lines.IsIndented())) {
        if (isReported) {
            Report(DiagnosticCode::UnknownLabel, m_Line, m_Lines[m_Line].m_LabelStart,
                   m_Path.OfLabel(m_Lines[m_Line].GetLabel()),
                   "there are more of '" + Excerpt(m_Lines[m_Line].GetLabel()) + "' than " + m_Layout[list].m_Label +
                       " says, which is " + std::to_string(count));
        }
        NoteMismatch(list, record);
        isReported = false;
        m_Line = m_Lines[m_Line].m_Next;
    }
}

// Whether the current line has a label of the list's elements.
bool TextExplainer::StandsInElement(LayoutIndex list) const {
    const std::vector<std::string_view> labels = ElementLabels(m_Layout, list);
    return m_Line < m_Lines.GetSize() &&
           std::find(labels.begin(), labels.end(), m_Lines[m_Line].GetLabel()) != labels.end();
}

// Elements of the same label that follow: the field behind the list looks like them, or the count of the next list is
// gone, or has changed places with its first element.
bool TextExplainer::StandsForNextList(LayoutIndex list, Record& record) {
    const LayoutIndex next = m_Layout[list].m_End;
    if (m_Line == m_Lines.GetSize() || next >= m_Layout.GetSize() || m_Layout[next].m_Parent != m_Layout[list].m_Parent)
        return false;
    const std::string_view label = m_Lines[m_Line].GetLabel();
    const LayoutNode& nextNode = m_Layout[next];
    if (nextNode.m_Kind != LayoutKind::Count || !IsFirstOfElement(list, label) || !IsFirstOfElement(next, label))
        return nextNode.m_Label == label;
    const auto countLine = FindBelow(nextNode.m_Label, record);
    if (!countLine)
        return true;
    TextValue value;
    TextFault fault;
    const ArchiveLine line = m_Lines[*countLine];
    if (*countLine != m_Lines[m_Line].m_Next || !ReadTextValue(nextNode, line.m_Text, line.GetLabelEnd(), value, fault))
        return false;
    std::int64_t standing = 0;
    for (LineIndex element = *countLine + 1; HasLabel(element, label) && standing < value.m_Integer;
         element = m_Lines[element].m_Next)
        ++standing;
    return standing == value.m_Integer - 1;
}

// What more stands of the list's elements has the cause that was reported.
void TextExplainer::NoteMismatch(LayoutIndex list, Record& record) {
    for (const std::string_view label : ElementLabels(m_Layout, list))
        record.m_Mismatched.insert(label);
}

// How many lines with the label stand in the record from the current one on.
std::size_t TextExplainer::CountBelow(std::string_view label, Record& record) {
    if (!FindBelow(label, record))
        return 0;
    const std::vector<LineIndex>& lines = record.m_Lines->at(label);
    return static_cast<std::size_t>(lines.end() - std::lower_bound(lines.begin(), lines.end(), m_Line));
}

bool TextExplainer::IsFirstOfElement(LayoutIndex list, std::string_view label) const {
    LayoutIndex first = list + 1;
    while (m_Layout[first].m_Kind == LayoutKind::Use || m_Layout[first].m_Kind == LayoutKind::When)
        ++first;
    return m_Layout[first].m_Label == label;
}

} // namespace Corvid
