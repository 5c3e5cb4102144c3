#include "Engine/Archive/TextFileArchive.h"

#include <algorithm>
#include <string>

// Where a text archive stands in its input, and what is to be done with input that no value claims.

namespace Corvid {

void TextFileArchive::Stop() {
    FileArchive::Stop();
    CloseFastWay();
}

// Half of the letters, since some lines of an element may be missing.
ElementRoom TextFileArchive::GetRoom(const ElementSize& smallest) const {
    return GetRoomFor(smallest.m_LabelLetters / 2);
}

void TextFileArchive::SkipToLabel(Label either, Label other) {
    m_CurrentLineUnread = false;
    while (!m_Lines->IsAtEnd()) {
        const std::string_view text = TextWithLabel(m_Lines->Peek());
        if (ValueBehindLabel(text, either) || ValueBehindLabel(text, other))
            break;
        m_Lines->Take();
    }
    UpdateQuick();
}

std::optional<bool> TextFileArchive::IsNext(Label label) {
    if (IsStopped())
        return false;
    const std::string_view text = m_CurrentLineUnread ? m_CurrentText : TextWithLabel(m_Lines->Peek());
    return ValueBehindLabel(text, label).has_value();
}

bool TextFileArchive::ReportUnreadInput() {
    std::uint64_t lineCount = 0;
    std::uint64_t firstNumber = 0;
    std::uint64_t lastNumber = 0;
    std::string first;
    while (!m_Lines->IsAtEnd()) {
        const TextLine line = m_Lines->Peek();
        const std::uint64_t number = GetPhysicalLinesTaken() + 1;
        const bool isBlank = line.m_FirstUnit == 0 && std::all_of(line.m_Text.begin(), line.m_Text.end(), IsWhiteSpace);
        if (!isBlank && number != lastNumber) {
            if (lineCount++ == 0) {
                firstNumber = number;
                std::string storage;
                first = SkipWhiteSpace(TextForReport(line, storage));
                first.erase(std::find_if(first.begin(), first.end(), [](char c) { return c == '\r' || c == '\n'; }),
                            first.end());
            }
            lastNumber = number;
        }
        m_Lines->Take();
    }
    if (lineCount > 0)
        ReportMessage(Message::UnreadLines, {GetPath(), lineCount, firstNumber, std::string_view(first)});
    return lineCount > 0;
}

std::uint64_t TextFileArchive::GetPhysicalLinesTaken() const {
    return m_Lines->GetLinesTaken() + m_LinesTakenInPlace;
}

ReportPosition TextFileArchive::GetPosition() const {
    if (!m_Lines)
        return {};
    const std::uint64_t taken = GetPhysicalLinesTaken();
    return {ReportPosition::Kind::Line, m_CurrentLineUnread || m_Lines->IsInsideLine() ? taken + 1 : taken};
}

} // namespace Corvid
