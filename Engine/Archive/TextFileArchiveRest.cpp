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

// The lines that nobody asked for: how many, and the first of them. Blank ones do not count, and of a long line all
// pieces are one.
class TextFileArchive::UnreadLines {
public:
    void Add(const TextLine& line, std::uint64_t number) {
        const bool isBlank = line.m_FirstUnit == 0 && !line.m_HasNul &&
                             std::all_of(line.m_Text.begin(), line.m_Text.end(), IsWhiteSpace);
        if (isBlank || number == m_LastNumber)
            return;
        m_LastNumber = number;
        if (m_Count++ > 0)
            return;
        m_FirstNumber = number;
        std::string storage;
        m_First = SkipWhiteSpace(TextForReport(line, storage));
        m_First.erase(std::min(m_First.find_first_of("\r\n"), m_First.size()));
    }

    // Whether there were any.
    bool Report(const TextFileArchive& archive) const {
        if (m_Count > 0)
            archive.ReportMessage(Message::UnreadLines,
                                  {archive.GetPath(), m_Count, m_FirstNumber, std::string_view(m_First)});
        return m_Count > 0;
    }

private:
    std::uint64_t m_Count = 0;
    std::uint64_t m_FirstNumber = 0;
    std::uint64_t m_LastNumber = 0;
    std::string m_First;
};

void TextFileArchive::SkipEntry(Label contents, Label nextEntry, std::span<const Label> behindList) {
    m_CurrentLineUnread = false;
    UnreadLines unread;
    std::size_t ownTabs = 0; // of the line that the entry's contents are nested in
    bool isFirst = true, isWithinEntry = false;
    for (; !m_Lines->IsAtEnd(); isFirst = false) {
        const TextLine line = m_Lines->Peek();
        const std::string_view text = TextWithLabel(line);
        const auto isAt = [text](Label label) { return ValueBehindLabel(text, label).has_value(); };
        if (isAt(nextEntry) || std::any_of(behindList.begin(), behindList.end(), isAt))
            break;
        const std::size_t tabs = std::min(line.m_Text.find_first_not_of('\t'), line.m_Text.size());
        if (isFirst && isAt(contents)) {
            ownTabs = tabs;
            isWithinEntry = true;
        } else if (!m_Lines->IsInsideLine()) {
            isWithinEntry = isWithinEntry && tabs > ownTabs;
        }
        if (!isWithinEntry)
            unread.Add(line, GetPhysicalLinesTaken() + 1);
        m_Lines->Take();
    }
    UpdateQuick();
    unread.Report(*this);
}

std::optional<bool> TextFileArchive::IsNext(Label label) {
    if (IsStopped())
        return false;
    const std::string_view text = m_CurrentLineUnread ? m_CurrentText : TextWithLabel(m_Lines->Peek());
    return ValueBehindLabel(text, label).has_value();
}

bool TextFileArchive::ReportUnreadInput() {
    UnreadLines unread;
    for (; !m_Lines->IsAtEnd(); m_Lines->Take())
        unread.Add(m_Lines->Peek(), GetPhysicalLinesTaken() + 1);
    return unread.Report(*this);
}

std::uint64_t TextFileArchive::GetPhysicalLinesTaken() const {
    return m_Lines->GetLinesTaken() + m_LinesTakenInPlace;
}

ReportPosition TextFileArchive::GetPosition() const {
    if (GetFile().GetAccess() == FileAccess::Write)
        return {};
    const std::uint64_t taken = GetPhysicalLinesTaken();
    return {ReportPosition::Kind::Line, m_CurrentLineUnread || m_Lines->IsInsideLine() ? taken + 1 : taken};
}

} // namespace Corvid
