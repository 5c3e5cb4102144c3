#include "Docs/Generate/Manual.h"

#include <algorithm>

namespace Corvid {

namespace {

// Short words might be requests of the language, and single characters its punctuation. Long texts go over several
// lines of source, which the language fills up again.
std::string Escape(std::string_view text) {
    constexpr std::size_t kLineLength = 60;
    std::string escaped;
    std::size_t lineStart = 0;
    std::size_t start = 0;
    while (start <= text.size()) {
        const std::size_t end = std::min(text.find(' ', start), text.size());
        const std::string_view word = text.substr(start, end - start);
        if (start > 0 && escaped.size() - lineStart > kLineLength) {
            escaped += '\n';
            lineStart = escaped.size();
        } else if (start > 0) {
            escaped += ' ';
        }
        if (word.size() <= 3 || word.starts_with('.') || word.starts_with('\''))
            escaped += "\\&";
        for (const char character : word) {
            if (character == '\\')
                escaped += "\\e";
            else if (character == '-')
                escaped += "\\-";
            else if (character == '"')
                escaped += "\\(dq";
            else
                escaped += character;
        }
        start = end + 1;
    }
    return escaped;
}

constexpr std::size_t kWidestLabel = 30; // wider ones stand on a line of their own

} // namespace

void Manual::BeginSection(std::string_view title) {
    m_Text.append(".Sh ").append(title).append("\n");
}

void Manual::Paragraph(std::string_view text) {
    m_Text.append(text).append("\n");
}

void Manual::Table(const RecordTable& record) {
    m_Text.append(".Ss ").append(Escape(record.m_Name)).append("\n");
    if (record.m_Rows.empty()) {
        m_Text += "No fields.\n";
        return;
    }
    std::size_t width = 0;
    for (const FieldRow& row : record.m_Rows) {
        if (row.m_Label.size() <= kWidestLabel)
            width = std::max(width, row.m_Label.size());
    }
    m_Text += ".Bl -tag -compact -width " + std::to_string(width) + "n\n";
    for (const FieldRow& row : record.m_Rows)
        m_Text += ".It " + Escape(row.m_Label) + "\n" + Escape(row.m_Text) + "\n";
    m_Text += ".El\n";
}

} // namespace Corvid
