#include "Engine/Archive/Text/TextFileReader.h"

#include <algorithm>
#include <utility>

#include "Engine/Archive/Text/UnreadLines.h"

// Which ways of reading are open, where the archive stands in its input, and what becomes of input that no value
// claims.

namespace Corvid {

TextFileReader::TextFileReader(std::unique_ptr<File> file, BitsRule bitsRule)
    : FileArchive(std::move(file), "Engine/Archive/TextFileArchive"), m_Lines(GetInput()), m_BitsRule(bitsRule) {
    if (m_BitsRule == BitsRule::Required)
        m_Lines.CloseInPlace(); // it knows plain decimals only
    UpdateWays();
}

void TextFileReader::UpdateWays() {
    m_IsAsWrittenOpen = m_Lines.IsInPlaceAllowed() && !m_IsChecksumEnabled;
}

void TextFileReader::EnableChecksum(bool isEnabled) {
    FileArchive::EnableChecksum(isEnabled);
    UpdateWays();
}

void TextFileReader::TakeBits() {
    if (m_BitsRule == BitsRule::Ignored)
        m_BitsRule = BitsRule::Taken;
}

void TextFileReader::ReadByLineOnly() {
    m_Lines.CloseInPlace();
    UpdateWays();
}

void TextFileReader::Stop() {
    FileArchive::Stop();
    ReadByLineOnly();
}

void TextFileReader::ReadObject(Archivable& object) {
    object.Load(*this);
}

// Half of the letters, since some lines of an element may be missing.
ElementRoom TextFileReader::GetRoom(const ElementSize& smallest) const {
    return GetRoomFor(smallest.m_LabelLetters / 2);
}

std::uint64_t TextFileReader::GetLinesTaken() const {
    return m_Lines.GetLinesTaken() + m_LinesTakenInWindow;
}

ReportPosition TextFileReader::GetPosition() const {
    if (GetFile().GetAccess() == FileAccess::Write)
        return {};
    const std::uint64_t taken = GetLinesTaken();
    return {ReportPosition::Kind::Line, m_CurrentLineUnread || m_Lines.IsInsideLine() ? taken + 1 : taken};
}

std::optional<bool> TextFileReader::IsNext(Label label) {
    if (IsStopped())
        return false;
    const std::string_view text = m_CurrentLineUnread ? m_CurrentText : TextWithLabel(m_Lines.Peek());
    return ValueBehindLabel(text, label).has_value();
}

void TextFileReader::SkipEntry(Label contents, Label nextEntry, std::span<const Label> behindList) {
    m_CurrentLineUnread = false;
    UnreadLines unread;
    std::size_t ownTabs = 0; // of the line that the entry's contents are nested in
    bool isFirst = true, isWithinEntry = false;
    for (; !m_Lines.IsAtEnd(); isFirst = false) {
        const TextLine line = m_Lines.Peek();
        const std::string_view text = TextWithLabel(line);
        const auto isAt = [text](Label label) { return ValueBehindLabel(text, label).has_value(); };
        if (isAt(nextEntry) || std::any_of(behindList.begin(), behindList.end(), isAt))
            break;
        const std::size_t tabs = std::min(line.m_Text.find_first_not_of('\t'), line.m_Text.size());
        if (isFirst && isAt(contents)) {
            ownTabs = tabs;
            isWithinEntry = true;
        } else if (!m_Lines.IsInsideLine()) {
            isWithinEntry = isWithinEntry && tabs > ownTabs;
        }
        if (!isWithinEntry)
            unread.Add(line, GetLinesTaken() + 1);
        m_Lines.Take();
    }
    UpdateWays();
    ReportUnread(unread);
}

bool TextFileReader::ReportUnreadInput() {
    UnreadLines unread;
    for (; !m_Lines.IsAtEnd(); m_Lines.Take())
        unread.Add(m_Lines.Peek(), GetLinesTaken() + 1);
    ReportUnread(unread);
    return unread.GetCount() > 0;
}

void TextFileReader::ReportUnread(const UnreadLines& unread) const {
    if (unread.GetCount() > 0)
        ReportMessage(Message::UnreadLines,
                      {GetPath(), unread.GetCount(), unread.GetFirstNumber(), std::string_view(unread.GetFirst())});
}

} // namespace Corvid
