#include "Corvid/Json/JsonWriter.h"

namespace Corvid {

namespace {

constexpr std::size_t kBlockSize = 64 * 1024; // bytes that are handed on at once
constexpr std::size_t kIndent = 2;            // blanks

} // namespace

void JsonWriter::Name(std::string_view quoted) {
    Separate();
    m_Text.append(quoted).append(m_IsIndented ? ": " : ":");
    m_HasName = true;
}

void JsonWriter::Add(const Json& value) {
    Separate();
    if (value.is_number_integer())
        m_Text += std::to_string(value.get<std::int64_t>());
    else
        m_Text += JsonText(value);
}

void JsonWriter::Finish() {
    if (m_IsIndented)
        m_Text.push_back('\n');
    m_Sink.WriteBlock(m_Text.data(), m_Text.size());
    m_Text.clear();
}

void JsonWriter::Begin(char bracket) {
    Separate();
    m_Text.push_back(bracket);
    ++m_Depth;
    m_IsFirst = true;
}

void JsonWriter::End(char bracket) {
    --m_Depth;
    if (!m_IsFirst)
        BreakLine();
    m_Text.push_back(bracket);
    m_IsFirst = false;
}

// In front of a name, or of a value that has none.
void JsonWriter::Separate() {
    if (m_Text.size() >= kBlockSize) {
        m_Sink.WriteBlock(m_Text.data(), m_Text.size());
        m_Text.clear();
    }
    if (!m_HasName && !m_IsFirst)
        m_Text.push_back(',');
    if (!m_HasName && m_Depth > 0)
        BreakLine();
    m_IsFirst = m_HasName = false;
}

void JsonWriter::BreakLine() {
    if (m_IsIndented)
        m_Text.append("\n").append(m_Depth * kIndent, ' ');
}

} // namespace Corvid
