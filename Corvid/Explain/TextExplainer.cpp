#include "Corvid/Explain/TextExplainer.h"

#include <algorithm>

#include "Corvid/Explain/BadCount.h"
#include "Engine/String/NearWord.h"

namespace Corvid {

namespace {

constexpr std::size_t kLongestLabel = 127;

// Whether a label that nobody knows reads like one.
bool IsShownInPaths(std::string_view label) {
    return label.size() <= kLongestLabel && std::all_of(label.begin(), label.end(), [](char c) {
               return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' ||
                      c == ':';
           });
}

// A label is shown whole, so that one letter more or less can be seen; what no label can be is cut.
std::string ExcerptOfLabel(std::string_view label) {
    return IsShownInPaths(label) ? std::string(label) : Excerpt(label);
}

} // namespace

TextExplainer::TextExplainer(const Layout& layout, TextLines& lines, DiagnosticLog& log, ValueTree& tree)
    : m_Layout(layout), m_Lines(lines), m_Log(log), m_Tree(tree), m_Conditions(layout) {}

void TextExplainer::Run(bool isWholeLayout) {
    Record file;
    file.m_Labels = &LabelsOf(0, m_Layout.GetSize());
    ReadFields(0, m_Layout.GetSize(), file, nullptr);
    if (isWholeLayout)
        EndRecord(file);
    m_Tree.Finish();
}

// Fields -------------------------------------------------------------------------------------------------------------

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
        TextFault fault;
        bool isWhole = true;
        if (isLabelLine) {
            isWhole = ReadTextEnd(line.m_Text, line.GetLabelEnd(), fault);
        } else {
            TextValue value;
            isWhole = ReadTextValue(node, line.m_Text, line.GetLabelEnd(), value, fault);
            if (isWhole || fault.m_Code == DiagnosticCode::TooLong)
                value.AddTo(m_Tree, node.m_Label);
            if (isWhole)
                value.KeepFor(m_Conditions, index);
        }
        if (!isWhole && !place.m_IsMisspelt)
            Report(fault.m_Code, place.m_Line, fault.m_Position, m_Path.Of(m_Layout, node, element), fault.m_Message);
        if (m_Lines.IsIndented())
            depth = line.m_Depth + 1;
        if (isLabelLine && IsDoubled(place.m_Line, record, element))
            ReportUnknown(m_Line++, record);
    } else {
        depth = m_Lines[m_Line].m_Depth;
    }
    if (node.m_Kind == LayoutKind::Record)
        ReadNested(index, depth, record, element);
    else if (node.m_Kind == LayoutKind::Matrix33 || node.m_Kind == LayoutKind::Matrix44)
        ReadMatrix(index, depth, record, element);
    if (place.m_IsEarly)
        m_Line = resume;
}

void TextExplainer::ReadNested(LayoutIndex index, std::uint32_t depth, const Record& outer,
                               const ElementPlace* element) {
    const LayoutNode& node = m_Layout[index];
    Record record;
    record.m_Labels = &LabelsOf(index + 1, node.m_End);
    record.m_Depth = m_Lines.IsIndented() ? depth : 0;
    if (m_Line < m_Lines.GetSize() && m_Lines[m_Line].m_Depth > depth &&
        record.m_Labels->AsksFor(m_Lines[m_Line].GetLabel()))
        record.m_Depth = m_Lines[m_Line].m_Depth;
    record.m_Outer = &outer;
    record.m_OuterNode = index;
    const std::size_t path = m_Path.Enter(m_Layout, node, element);
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

// Lists --------------------------------------------------------------------------------------------------------------

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
        SkipStrays(record);
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
    if (!ReadTextValue(node, line.m_Text, line.GetLabelEnd(), value, fault)) {
        if (!place.m_IsMisspelt)
            Report(fault.m_Code, place.m_Line, fault.m_Position, field, fault.m_Message);
        return std::nullopt;
    }
    const std::size_t start = line.m_Text.find_first_not_of(" \t\v\f\r", line.GetLabelEnd());
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

// Finding ------------------------------------------------------------------------------------------------------------

TextExplainer::Place TextExplainer::Find(LayoutIndex index, Record& record, const ElementPlace* element) {
    const std::string& label = m_Layout[index].m_Label;
    SkipStrays(record);
    if (EndsWithin(index, element))
        return {};
    if (const auto place = FindHere(label, index, record))
        return *place;
    if (const auto line = FindBelow(label, record)) {
        PassOver(*line, index, record);
        return {Place::Kind::Line, *line};
    }
    if (const auto place = FindMisspelt(index, record, element))
        return *place;
    ReportMissing(index, element, "");
    return {};
}

TextExplainer::Place TextExplainer::FindElement(LayoutIndex index, Record& record, const ElementPlace& element,
                                                bool isFirst) {
    const std::string& label = m_Layout[index].m_Label;
    SkipStrays(record);
    if (EndsWithin(index, &element))
        return {};
    if (const auto place = FindHere(label, index, record))
        return *place;
    if (const auto place = FindMisspelt(index, record, &element))
        return *place;
    const auto line = FindBelow(label, record);
    if (line && !IsSearchOver(element.m_List, *line, record, isFirst)) {
        PassOver(*line, index, record, Passing::NoElements);
        return {Place::Kind::Line, *line};
    }
    if (line && AreElementsComplete(*line, element, record)) {
        const std::size_t due = static_cast<std::size_t>(*element.m_Count) - element.m_Index;
        const bool isTooMany = !isFirst || CountBelow(m_Lines[m_Line].GetLabel(), record) > due;
        PassOver(*line, index, record, isTooMany ? Passing::NoElements : Passing::Any);
        return {Place::Kind::Line, *line};
    }
    if (!isFirst)
        ReportMissing(index, &element, "");
    return {};
}

// Whether the text ends within the label of the field, which is reported then: all that is missing has this cause.
bool TextExplainer::EndsWithin(LayoutIndex index, const ElementPlace* element) {
    if (m_Line + 1 != m_Lines.GetSize())
        return false;
    const LayoutNode& node = m_Layout[index];
    const ArchiveLine line = m_Lines[m_Line];
    const std::string_view begun = line.GetLabel();
    if (begun.data() + begun.size() != m_Lines.GetTextEnd() || begun.size() >= node.m_Label.size() ||
        !std::string_view(node.m_Label).starts_with(begun))
        return false;
    Report(DiagnosticCode::MissingField, m_Line, line.m_LabelStart, m_Path.Of(m_Layout, node, element),
           "missing; the file ends within its label");
    m_Line = m_Lines.GetSize();
    m_IsEndReported = true;
    return true;
}

// Whether the elements that are still due stand there all the same, so that the current line, a part of an element
// right in front of `found`, is one too many or comes too early.
bool TextExplainer::AreElementsComplete(LineIndex found, const ElementPlace& element, Record& record) {
    if (!element.m_Count || m_Line == m_Lines.GetSize() || m_Lines[m_Line].m_Next != found ||
        !StandsInElement(element.m_List))
        return false;
    LayoutIndex first = element.m_List + 1;
    while (m_Layout[first].m_Kind == LayoutKind::Use || m_Layout[first].m_Kind == LayoutKind::When)
        ++first;
    const std::size_t due = static_cast<std::size_t>(*element.m_Count) - element.m_Index;
    return CountBelow(m_Layout[first].m_Label, record) >= due;
}

// At the current line, whatever its depth; but a shallower line that an outer record still asks for is that one's.
std::optional<TextExplainer::Place> TextExplainer::FindHere(std::string_view label, LayoutIndex index, Record& record) {
    if (HasLabel(m_Line, label)) {
        bool isOwn = m_Lines[m_Line].m_Depth >= record.m_Depth || !m_Lines.IsIndented();
        for (const Record* inner = &record; !isOwn && inner->m_Outer != nullptr; inner = inner->m_Outer) {
            if (inner->m_Outer->m_Labels->AsksForBehind(label, inner->m_OuterNode))
                return std::nullopt;
        }
        return Place{Place::Kind::Line, m_Line};
    }
    const auto early = record.m_Early.find(label);
    if (early == record.m_Early.end() || early->second.empty())
        return std::nullopt;
    Place place{Place::Kind::Line, early->second.front()};
    early->second.erase(early->second.begin());
    const bool isAlone = m_Lines[place.m_Line].m_Next == NextText(place.m_Line);
    if (isAlone && StandsNested(index, record)) // its own line alone has come too early
        return Place{Place::Kind::NestedOnly, m_Line};
    place.m_IsEarly = true;
    return place;
}

// A line that stands where the field is due and can only be meant for it.
std::optional<TextExplainer::Place> TextExplainer::FindMisspelt(LayoutIndex index, Record& record,
                                                                const ElementPlace* element) {
    if (m_Line == m_Lines.GetSize())
        return std::nullopt;
    const LayoutNode& node = m_Layout[index];
    const ArchiveLine line = m_Lines[m_Line];
    const bool isInRecord = line.m_Depth >= record.m_Depth || !m_Lines.IsIndented();
    if (isInRecord && IsNearWord(line.GetLabel(), node.m_Label) && !record.m_Labels->AsksFor(line.GetLabel())) {
        Report(DiagnosticCode::MissingField, m_Line, line.m_LabelStart, m_Path.Of(m_Layout, node, element),
               "missing; here stands '" + ExcerptOfLabel(line.GetLabel()) + "' (did you mean that?)");
        Place place{Place::Kind::Line, m_Line};
        place.m_IsMisspelt = true;
        return place;
    }
    if (StandsNested(index, record)) {
        Report(DiagnosticCode::MissingField, m_Line, line.m_LabelStart, m_Path.Of(m_Layout, node, element),
               "missing; its nested lines stand here without it");
        return Place{Place::Kind::NestedOnly, m_Line};
    }
    return std::nullopt;
}

// Whether what is nested in the record or matrix stands at the current line. A single line that its own line follows
// has gone astray.
bool TextExplainer::StandsNested(LayoutIndex index, const Record& outer) {
    const LayoutNode& node = m_Layout[index];
    if (m_Line == m_Lines.GetSize())
        return false;
    if (node.m_Kind == LayoutKind::Matrix33 || node.m_Kind == LayoutKind::Matrix44)
        return IsRow(m_Line);
    if (node.m_Kind != LayoutKind::Record || (m_Lines[m_Line].m_Depth <= outer.m_Depth && m_Lines.IsIndented()))
        return false;
    const std::string_view here = m_Lines[m_Line].GetLabel();
    const RecordLabels& labels = LabelsOf(index + 1, node.m_End);
    if (!labels.AsksFor(here))
        return false;
    if (!m_Lines.IsIndented())
        return here == labels.GetAll().front() && !outer.m_Labels->AsksFor(here);
    return labels.GetAll().size() == 1 || !HasLabel(m_Lines[m_Line].m_Next, node.m_Label);
}

// Where no line is indented, labels alone tell which record a line is of: behind the own line of a nested record, and
// behind a label that only a record around asks for, it may be of another one.
bool TextExplainer::IsOfOuter(std::string_view label, const Record& record) const {
    if (m_Lines.IsIndented() || record.m_Labels->AsksFor(label))
        return false;
    for (const Record* around = record.m_Outer; around != nullptr; around = around->m_Outer) {
        if (around->m_Labels->AsksFor(label))
            return true;
    }
    return false;
}

bool TextExplainer::OpensUnindented(std::string_view label, const Record& record) const {
    const std::vector<LayoutIndex>* const nodes = record.m_Labels->FindNodes(label);
    return !m_Lines.IsIndented() && nodes != nullptr && m_Layout[nodes->front()].m_Kind == LayoutKind::Record;
}

// Among the record's own lines behind the current one. They are gathered once: a file that is wrong from end to end
// must not be searched through for each field.
std::optional<LineIndex> TextExplainer::FindBelow(std::string_view label, Record& record) {
    if (record.m_Lines && m_Line >= record.m_LinesEnd)
        record.m_Lines.reset();
    if (!record.m_Lines) {
        record.m_Lines.emplace();
        record.m_LinesEnd = m_Lines.GetSize();
        for (LineIndex line = m_Line; line < m_Lines.GetSize();) {
            const ArchiveLine here = m_Lines[line];
            if (!here.IsBlank() && (here.m_Depth < record.m_Depth || IsOfOuter(here.GetLabel(), record)))
                break;
            if (here.m_Depth == record.m_Depth && !here.IsBlank())
                (*record.m_Lines)[here.GetLabel()].push_back(line);
            if (OpensUnindented(here.GetLabel(), record)) {
                record.m_LinesEnd = line + 1;
                break;
            }
            line = here.m_Depth > record.m_Depth || here.IsBlank() ? line + 1 : here.m_Next;
        }
    }
    const auto found = record.m_Lines->find(label);
    if (found == record.m_Lines->end())
        return std::nullopt;
    const auto line = std::lower_bound(found->second.begin(), found->second.end(), m_Line);
    return line != found->second.end() ? std::optional(*line) : std::nullopt;
}

// An element is not looked for behind a line that the record asks for after the list, nor behind a part of another one.
bool TextExplainer::IsSearchOver(LayoutIndex list, LineIndex found, Record& record, bool isFirst) {
    const std::vector<std::string_view> own = ElementLabels(m_Layout, list);
    for (const std::string_view label : record.m_Labels->GetAll()) {
        const bool isOwn = std::find(own.begin(), own.end(), label) != own.end();
        const bool isBoundary = isOwn ? isFirst != IsFirstOfElement(list, label)
                                      : record.m_Labels->AsksForBehind(label, m_Layout[list].m_End);
        if (!isBoundary)
            continue;
        const auto line = FindBelow(label, record);
        if (line && *line < found)
            return true;
    }
    return false;
}

// Reports ------------------------------------------------------------------------------------------------------------

void TextExplainer::ReportMissing(LayoutIndex index, const ElementPlace* element, const std::string& why) {
    const LayoutNode& node = m_Layout[index];
    if (m_Line == m_Lines.GetSize()) {
        const bool isCut = m_Lines.IsLastLineCut() && m_Lines.IsLastReported();
        if (!m_IsEndReported && !isCut)
            Report(DiagnosticCode::MissingField, m_Line, 0, m_Path.Of(m_Layout, node, element),
                   "missing; the file ends here" + why);
        m_IsEndReported = true;
        return;
    }
    const ArchiveLine line = m_Lines[m_Line];
    Report(DiagnosticCode::MissingField, m_Line, line.m_LabelStart, m_Path.Of(m_Layout, node, element),
           "missing; here stands '" + ExcerptOfLabel(line.GetLabel()) + "'" + why);
}

// The current line moves to `end`; each line in front of it is told of once, with what is nested in it.
void TextExplainer::PassOver(LineIndex end, LayoutIndex wanted, Record& record, Passing passing) {
    std::vector<std::string_view> told;
    while (m_Line < end) {
        const ArchiveLine line = m_Lines[m_Line];
        const std::string_view label = line.GetLabel();
        const bool isLater =
            !line.IsBlank() && line.m_Depth == record.m_Depth && record.m_Labels->AsksForBehind(label, wanted + 1);
        if (!isLater || passing == Passing::NoElements) {
            ReportUnknown(m_Line, record);
        } else {
            // Many elements that come too early have come by one move.
            if (std::find(told.begin(), told.end(), label) == told.end()) {
                told.push_back(label);
                Report(DiagnosticCode::OutOfOrder, m_Line, line.m_LabelStart, m_Path.OfLabel(label),
                       "comes too early: " + m_Layout[wanted].m_Label + " is due here");
            }
            record.m_Early[label].push_back(m_Line);
        }
        m_Line = std::min(line.m_Next, end);
    }
}

void TextExplainer::ReportUnknown(LineIndex index, const Record& record) {
    const ArchiveLine line = m_Lines[index];
    if (record.m_Mismatched.contains(line.GetLabel()))
        return;
    if (line.IsBlank()) {
        Report(DiagnosticCode::UnknownLabel, index, 0, m_Path.OfRecord(), "a blank line, which no record asks for");
        return;
    }
    const std::string_view label = line.GetLabel();
    std::string message;
    if (record.m_Labels->AsksFor(label)) {
        message = "'" + ExcerptOfLabel(label) + "' has been read already, or is not due here";
    } else {
        message = "no field is called '" + ExcerptOfLabel(label) + "' here";
        if (const std::string_view nearest = NearestWord(label, record.m_Labels->GetAll()); !nearest.empty())
            message += " (did you mean '" + std::string(nearest) + "'?)";
    }
    const std::string field = IsShownInPaths(label) ? m_Path.OfLabel(label) : m_Path.OfRecord();
    Report(DiagnosticCode::UnknownLabel, index, line.m_LabelStart, field, std::move(message));
}

// Lines that the record never asks for.
void TextExplainer::PassOverStrangers(const Record& record) {
    while (m_Line < m_Lines.GetSize() && (m_Lines[m_Line].IsBlank() || m_Lines[m_Line].m_Depth == record.m_Depth) &&
           !record.m_Labels->AsksFor(m_Lines[m_Line].GetLabel())) {
        ReportUnknown(m_Line, record);
        m_Line = m_Lines[m_Line].m_Next;
    }
}

// Blank lines, and lines in front of the record's depth that neither it nor a record around it asks for, where it goes
// on right behind them.
void TextExplainer::SkipStrays(Record& record) {
    while (m_Line < m_Lines.GetSize() && (m_Lines[m_Line].IsBlank() || IsStray(record))) {
        if (!m_Lines[m_Line].IsBlank())
            record.m_Lines.reset(); // they were gathered up to here
        ReportUnknown(m_Line++, record);
    }
}

bool TextExplainer::IsStray(const Record& record) const {
    const ArchiveLine line = m_Lines[m_Line];
    if (line.m_Depth >= record.m_Depth || !m_Lines.IsIndented())
        return false;
    for (const Record* around = &record; around != nullptr; around = around->m_Outer) {
        if (around->m_Labels->AsksFor(line.GetLabel()))
            return false;
    }
    const LineIndex next = NextText(m_Line);
    return next < m_Lines.GetSize() && m_Lines[next].m_Depth >= record.m_Depth &&
           record.m_Labels->AsksFor(m_Lines[next].GetLabel());
}

// The next line that is not blank.
LineIndex TextExplainer::NextText(LineIndex line) const {
    do
        ++line;
    while (line < m_Lines.GetSize() && m_Lines[line].IsBlank());
    return line;
}

DiagnosticPlace TextExplainer::PlaceOf(LineIndex line, std::size_t byte) const {
    return DiagnosticPlace::AtLine(m_Lines.GetNumber(line),
                                   line < m_Lines.GetSize() ? m_Lines[line].GetColumn(byte) : 1);
}

void TextExplainer::Report(DiagnosticCode code, LineIndex line, std::size_t byte, std::string field,
                           std::string message) {
    if (line < m_Lines.GetSize()) {
        if (m_Lines.IsSpoilt(line))
            return;
        m_Lines.MarkReported(line);
    }
    m_Log.Add(code, PlaceOf(line, byte), std::move(field), std::move(message));
}

// Labels -------------------------------------------------------------------------------------------------------------

bool TextExplainer::StandsHere(LayoutIndex first, LayoutIndex end) const {
    for (LayoutIndex index = first; index < end; ++index) {
        const LayoutNode& node = m_Layout[index];
        if (node.m_Kind != LayoutKind::Use && node.m_Kind != LayoutKind::When)
            return HasLabel(m_Line, node.m_Label);
    }
    return false;
}

const RecordLabels& TextExplainer::LabelsOf(LayoutIndex first, LayoutIndex end) {
    std::unique_ptr<RecordLabels>& labels = m_Labels[first];
    if (labels == nullptr)
        labels = std::make_unique<RecordLabels>(m_Layout, first, end);
    return *labels;
}

// Of one element at the least: what stands under a condition may not be there.
std::uint64_t TextExplainer::SmallestElementLetters(LayoutIndex first, LayoutIndex end) const {
    std::uint64_t letters = 0;
    for (LayoutIndex index = first; index < end;) {
        const LayoutNode& node = m_Layout[index];
        letters += node.m_Label.size();
        index = node.m_Kind == LayoutKind::When || node.m_Kind == LayoutKind::Count ? node.m_End : index + 1;
    }
    return letters;
}

} // namespace Corvid
