#include "Corvid/Explain/TextExplainer.h"

#include <algorithm>

#include "Corvid/Explain/LabelExcerpt.h"
#include "Engine/String/NearWord.h"

namespace Corvid {

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
    if (m_Line < end)
        m_Taken.insert(end);
    bool isTold = false; // many fields that come too early have come by one move
    while (m_Line < end) {
        const ArchiveLine line = m_Lines[m_Line];
        const std::string_view label = line.GetLabel();
        const bool isLater =
            !line.IsBlank() && line.m_Depth == record.m_Depth && record.m_Labels->AsksForBehind(label, wanted + 1);
        if (!isLater || passing == Passing::NoElements) {
            ReportUnknown(m_Line, record);
        } else {
            if (!isTold)
                Report(DiagnosticCode::OutOfOrder, m_Line, line.m_LabelStart, m_Path.OfLabel(label),
                       "comes too early: " + m_Layout[wanted].m_Label + " is due here, and stands in line " +
                           std::to_string(m_Lines.GetNumber(end)));
            isTold = true;
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

} // namespace Corvid
