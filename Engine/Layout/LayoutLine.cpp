#include "Engine/Layout/LayoutLine.h"

#include <algorithm>
#include <iterator>

#include "Engine/String/Unicode.h"

namespace Corvid {

namespace {

// What means something else where a label could stand, when it is not quoted.
constexpr std::string_view kReserved[] = {"layout", "record", "entity", "use", "when", "not", "=", "?"};

// Walks over the characters of a line and counts them.
class Cursor {
public:
    explicit Cursor(std::string_view text) : m_Position(text.data()), m_End(text.data() + text.size()) {}

    bool IsAtEnd() const { return m_Position == m_End; }
    char Peek() const { return *m_Position; }
    bool IsAtBlank() const { return Peek() == ' ' || Peek() == '\t'; }
    int GetColumn() const { return m_Column; }

    void SkipBlanks() {
        while (!IsAtEnd() && IsAtBlank())
            Skip();
    }
    void Skip() {
        ++m_Position;
        ++m_Column;
    }

    // Appends the next character; false: it is ill-formed, or no layout holds it.
    bool Take(std::string& text) {
        const char* const first = m_Position;
        const char32_t character = DecodeUtf8(m_Position, m_End);
        if (character < U' ' || character == 0x7F)
            return false;
        if (character == kReplacementCharacter && std::string_view(first, m_Position) != "\xEF\xBF\xBD")
            return false;
        text.append(first, m_Position);
        ++m_Column;
        return true;
    }

private:
    const char* m_Position;
    const char* m_End;
    int m_Column = 1;
};

class LineSplitter {
public:
    LineSplitter(std::string_view text, LayoutLine& line, std::vector<LayoutError>& errors)
        : m_Cursor(text), m_Line(line), m_Errors(errors) {}

    void Split() {
        for (; !m_Cursor.IsAtEnd() && m_Cursor.Peek() == '\t'; m_Cursor.Skip())
            ++m_Line.m_Depth;
        const int indentationEnd = m_Cursor.GetColumn();
        m_Cursor.SkipBlanks();
        if (m_Cursor.IsAtEnd() || m_Cursor.Peek() == '#')
            return SkipComment();
        if (m_Cursor.GetColumn() != indentationEnd)
            return Fail(indentationEnd, "blanks in front of the line; indent it with tabs, one a level");
        while (!m_Cursor.IsAtEnd() && m_Cursor.Peek() != '#') {
            LayoutToken token;
            token.m_Column = m_Cursor.GetColumn();
            token.m_IsQuoted = m_Cursor.Peek() == '"';
            if (!(token.m_IsQuoted ? TakeQuoted(token.m_Text) : TakePlain(token.m_Text)))
                return;
            m_Line.m_EndColumn = m_Cursor.GetColumn();
            m_Line.m_Tokens.push_back(std::move(token));
            m_Cursor.SkipBlanks();
        }
        SkipComment();
    }

private:
    bool TakePlain(std::string& text) {
        while (!m_Cursor.IsAtEnd() && !m_Cursor.IsAtBlank()) {
            if (m_Cursor.Peek() == '"') {
                Fail(m_Cursor.GetColumn(), "a quote within a word; write the word in quotes, and this one as \\\"");
                return false;
            }
            if (!TakeCharacter(text))
                return false;
        }
        return true;
    }

    bool TakeQuoted(std::string& text) {
        const int start = m_Cursor.GetColumn();
        m_Cursor.Skip();
        while (!m_Cursor.IsAtEnd() && m_Cursor.Peek() != '"') {
            if (m_Cursor.Peek() == '\\') {
                const int escape = m_Cursor.GetColumn();
                m_Cursor.Skip();
                if (m_Cursor.IsAtEnd() || (m_Cursor.Peek() != '"' && m_Cursor.Peek() != '\\')) {
                    Fail(escape, "an escape that is neither \\\" nor \\\\");
                    return false;
                }
            }
            if (!TakeCharacter(text))
                return false;
        }
        if (m_Cursor.IsAtEnd()) {
            Fail(start, "a quote that is not closed on its line");
            return false;
        }
        m_Cursor.Skip();
        if (!m_Cursor.IsAtEnd() && !m_Cursor.IsAtBlank()) {
            Fail(m_Cursor.GetColumn(), "a blank is missing behind the closing quote");
            return false;
        }
        return true;
    }

    bool TakeCharacter(std::string& text) {
        const int column = m_Cursor.GetColumn();
        if (m_Cursor.Take(text))
            return true;
        Fail(column, "a control character, or bytes that are not UTF-8");
        return false;
    }

    void SkipComment() {
        std::string comment;
        while (!m_Cursor.IsAtEnd()) {
            if (m_Cursor.Peek() == '\t')
                m_Cursor.Skip();
            else if (!TakeCharacter(comment))
                return;
        }
    }

    void Fail(int column, std::string message) {
        m_Errors.push_back({m_Line.m_Number, column, std::move(message)});
        m_Line.m_Tokens.clear();
    }

    Cursor m_Cursor;
    LayoutLine& m_Line;
    std::vector<LayoutError>& m_Errors;
};

} // namespace

LayoutLine SplitLayoutLine(std::string_view text, int number, std::vector<LayoutError>& errors) {
    LayoutLine line;
    line.m_Number = number;
    LineSplitter(text, line, errors).Split();
    return line;
}

std::string QuotedLayoutWord(std::string_view text) {
    std::string quoted = "\"";
    for (const char character : text) {
        if (character == '"' || character == '\\')
            quoted += '\\';
        quoted += character;
    }
    return quoted += '"';
}

std::string LayoutWord(std::string_view text) {
    const bool isPlain = !text.empty() && text.find_first_of(" \t#\"") == text.npos &&
                         std::find(std::begin(kReserved), std::end(kReserved), text) == std::end(kReserved);
    return isPlain ? std::string(text) : QuotedLayoutWord(text);
}

} // namespace Corvid
