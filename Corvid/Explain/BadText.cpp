#include "Corvid/Explain/BadText.h"

#include <algorithm>
#include <cstring>
#include <string>

#include "Engine/Archive/Text/TextLineReader.h"
#include "Engine/String/Unicode.h"

namespace Corvid {

namespace {

// UTF-16 units of a line without its end, which takes one.
constexpr std::size_t kMostUnits = TextLineReader::kMaxLineUnits - 1;

// U+FFFD itself is well-formed in a file.
bool IsIllFormed(char32_t character, const char* start, const char* behind) {
    return character == kReplacementCharacter &&
           std::string_view(start, static_cast<std::size_t>(behind - start)) != "\xEF\xBF\xBD";
}

bool IsAscii(std::string_view text) {
    unsigned char all = 0;
    for (const char byte : text)
        all |= static_cast<unsigned char>(byte);
    return all < 0x80;
}

bool IsWellFormed(std::string_view text) {
    const char* position = text.data();
    const char* const end = position + text.size();
    while (position != end) {
        const char* const start = position;
        if (static_cast<unsigned char>(*position) < 0x80)
            ++position;
        else if (const char32_t character = DecodeUtf8(position, end); IsIllFormed(character, start, position))
            return false;
    }
    return true;
}

bool HasLongLine(std::string_view text) {
    while (text.size() > kMostUnits) {
        const std::size_t end = text.substr(0, kMostUnits + 2).rfind('\n'); // fewer units than bytes
        if (end == text.npos)
            return true; // may be: whoever reports it counts
        text.remove_prefix(end + 1);
    }
    return false;
}

} // namespace

bool HasBadText(std::string_view text) {
    return std::memchr(text.data(), 0, text.size()) != nullptr || HasLongLine(text) ||
           !(IsAscii(text) || IsWellFormed(text));
}

void BadTextScan::WriteBlock(const char* bytes, std::size_t count) {
    if (m_HasBadText)
        return;
    std::string_view text(bytes, count);
    const std::size_t firstEnd = text.find('\n');
    if (!m_LineBegun.empty() && firstEnd != text.npos) {
        m_LineBegun += text.substr(0, firstEnd + 1);
        text.remove_prefix(firstEnd + 1);
        m_HasBadText = Corvid::HasBadText(m_LineBegun);
        m_LineBegun.clear();
    }
    const std::size_t whole = text.rfind('\n') + 1; // no line end: 0
    m_LineBegun += text.substr(whole);
    m_HasBadText = m_HasBadText || Corvid::HasBadText(text.substr(0, whole)) || HasLongLine(m_LineBegun);
}

void ReportBadText(TextLines& lines, DiagnosticLog& log) {
    for (LineIndex index = 0; index < lines.GetSize(); ++index) {
        const ArchiveLine line = lines[index];
        const char* const begin = line.m_Text.data();
        const char* const end = begin + line.m_Text.size();
        std::size_t units = 0;
        for (const char* position = begin; position != end;) {
            const char* const start = position;
            const char32_t character = DecodeUtf8(position, end);
            units += character >= 0x10000 ? 2 : 1;
            std::string why;
            if (character == 0)
                why = "a NUL stands here, and text has none";
            else if (IsIllFormed(character, start, position))
                why = "these bytes are no UTF-8";
            else if (units > kMostUnits)
                why = "the line is too long: it has more than " + std::to_string(kMostUnits) + " UTF-16 units";
            if (why.empty())
                continue;
            log.Add(DiagnosticCode::BadText,
                    DiagnosticPlace::AtLine(lines.GetNumber(index),
                                            line.GetColumn(static_cast<std::size_t>(start - begin))),
                    {}, std::move(why));
            lines.MarkSpoilt(index);
            break;
        }
    }
}

} // namespace Corvid
