#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "Engine/Layout/LayoutLine.h"

namespace Corvid {

// The words of a line of a layout, taken one after the other, and what is wrong with them.
class LayoutTokens {
public:
    explicit LayoutTokens(std::vector<LayoutError>& errors) : m_Errors(errors) {}

    void Begin(LayoutLine line);

    int GetNumber() const { return m_Line.m_Number; }
    int GetDepth() const { return m_Line.m_Depth; }
    int GetFirstColumn() const { return m_Line.m_Tokens.front().m_Column; }
    int GetColumn() const { return IsAtEnd() ? m_Line.m_EndColumn : Peek().m_Column; } // of the next word, or the end

    bool IsAtEnd() const { return m_Next == m_Line.m_Tokens.size(); }
    const LayoutToken& Peek() const { return m_Line.m_Tokens[m_Next]; }
    const LayoutToken& Take() { return m_Line.m_Tokens[m_Next++]; } // holds until Begin()
    bool TakeIf(std::string_view word);
    void GiveBack() { --m_Next; } // the word that was taken last
    std::size_t GetPlace() const { return m_Next; }
    const LayoutToken& GetToken(std::size_t place) const { return m_Line.m_Tokens[place]; }
    bool ExpectEnd(); // false: something is wrong, here or before

    bool Fail(int column, std::string message); // always false
    bool IsWrong() const { return m_IsWrong; }

private:
    std::vector<LayoutError>& m_Errors;
    LayoutLine m_Line;
    std::size_t m_Next = 0;
    bool m_IsWrong = false;
};

// How messages show what a layout holds, and what may have been meant: empty, or behind a blank.
std::string QuotedForMessage(std::string_view text);
std::string SuggestionFor(std::string_view written, std::span<const std::string_view> words);

} // namespace Corvid
