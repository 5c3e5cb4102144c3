#pragma once

#include <cstdint>

#include "Engine/Archive/Text/TextLine.h"
#include "Engine/File/InputStream.h"

namespace Corvid {

// Reads UTF-8 text line by line. A line longer than the line buffer comes in pieces.
class TextLineReader {
public:
    // UTF-16 units of a line at the most, its line end (always one unit) included; the buffer's terminator is not.
    static constexpr int kMaxLineUnits = 1023;

    explicit TextLineReader(InputStream& input) : m_Input(input) {}

    // The next line, without moving on; empty at the end of the input. Views are valid until the next call of Peek().
    TextLine Peek();
    // Moves behind the line that Peek() gave.
    void Take();

    bool IsAtEnd() { return m_FirstUnit == 0 && !m_Input.Ensure(1); }
    std::uint64_t GetLinesTaken() const { return m_LinesTaken; } // whole ones, by Take()
    bool IsInsideLine() const { return m_IsInsideLine; }         // what Take() took last was no whole line

    // Reading a line in place, without Peek(). While that is open, the window holds the next line up to its end, as far
    // as that is a line of less than kMaxLineUnits bytes, in front of InputStream::kPadding zero bytes at the end of
    // the input. TakeInPlace() moves behind the line if `end`, where its value ended, is its end but for blanks; if it
    // refuses, nothing has happened. Lines taken like this do not count in GetLinesTaken(). It is closed inside a line.
    bool IsInPlaceOpen();
    bool IsInPlaceAllowed() const { return !m_IsInPlaceClosed && !m_IsInsideLine; } // but for a window to be refilled
    const char* GetPosition() const { return m_Input.GetPosition(); }
    const char* GetWindowEnd() const { return m_Input.GetEnd(); }
    bool TakeInPlace(const char* end);

    // For good: every line is given by Peek() from now on.
    void CloseInPlace() { m_IsInPlaceClosed = true; }

private:
    const char* FindPieceEnd(TextLine& line);

    InputStream& m_Input;
    std::uint64_t m_LinesTaken = 0;
    const char* m_PieceEnd = nullptr; // of the line that Peek() gave
    char16_t m_FirstUnit = 0;
    char16_t m_NextFirstUnit = 0;
    bool m_IsInsideLine = false;
    bool m_IsInPlaceClosed = false;
};

inline const char* SkipBlanks(const char* position) {
    while (*position == ' ' || *position == '\t')
        ++position;
    return position;
}

inline bool TextLineReader::IsInPlaceOpen() {
    if (!IsInPlaceAllowed())
        return false;
    if (!m_Input.HasLookahead()) [[unlikely]]
        m_Input.Ensure(InputStream::kWindowSize / 2);
    return true;
}

inline bool TextLineReader::TakeInPlace(const char* end) {
    end = SkipBlanks(end);
    if (*end == '\r')
        ++end;
    if (*end != '\n' || end - m_Input.GetPosition() >= kMaxLineUnits) [[unlikely]]
        return false;
    m_Input.SetPosition(end + 1);
    return true;
}

} // namespace Corvid
