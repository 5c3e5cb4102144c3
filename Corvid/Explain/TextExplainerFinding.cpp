#include "Corvid/Explain/TextExplainer.h"

#include <algorithm>

#include "Corvid/Explain/LabelExcerpt.h"
#include "Corvid/Explain/TornLabel.h"
#include "Engine/String/NearWord.h"

namespace Corvid {

TextExplainer::Place TextExplainer::Find(LayoutIndex index, Record& record, const ElementPlace* element) {
    const std::string& label = m_Layout[index].m_Label;
    SkipStrays(record, index);
    if (EndsWithin(index, element))
        return {};
    if (const auto place = FindHere(label, index, record))
        return *place;
    if (const auto line = FindBelow(label, record); line && !HasLostItsLine(index, *line, record)) {
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
    SkipStrays(record, element.m_List);
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
    early->second.pop_front();
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
    const std::size_t labelEnd = FindEndOfTornLabel(line.m_Text, line.m_LabelStart, node.m_Label);
    if (labelEnd != 0 && line.GetLabel() != node.m_Label) {
        Report(DiagnosticCode::MissingField, m_Line, line.m_LabelStart, m_Path.Of(m_Layout, node, element),
               "missing; here it stands with a blank lost or too many, or one that is neither a space nor a tab");
        Place place{Place::Kind::Line, m_Line};
        place.m_IsMisspelt = true;
        place.m_LabelEnd = labelEnd;
        return place;
    }
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

// Whether what is nested in the record begins at the current line, and not behind its own line, which stands below.
bool TextExplainer::HasLostItsLine(LayoutIndex index, LineIndex own, const Record& outer) {
    const LayoutNode& node = m_Layout[index];
    if (node.m_Kind != LayoutKind::Record || !StandsNested(index, outer))
        return false;
    const std::string_view first = LabelsOf(index + 1, node.m_End).GetFirst();
    return HasLabel(m_Line, first) && !HasLabel(NextText(own), first);
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
        return here == labels.GetFirst() && !outer.m_Labels->AsksFor(here);
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
