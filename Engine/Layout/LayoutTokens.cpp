#include "Engine/Layout/LayoutTokens.h"

#include <utility>

#include "Engine/String/NearWord.h"

namespace Corvid {

void LayoutTokens::Begin(LayoutLine line) {
    m_Line = std::move(line);
    m_Next = 0;
    m_IsWrong = false;
}

bool LayoutTokens::TakeIf(std::string_view word) {
    if (IsAtEnd() || !Peek().Is(word))
        return false;
    ++m_Next;
    return true;
}

bool LayoutTokens::ExpectEnd() {
    if (!IsAtEnd())
        Fail(GetColumn(), "nothing is expected here, and there is " + QuotedForMessage(Peek().m_Text));
    return !m_IsWrong;
}

bool LayoutTokens::Fail(int column, std::string message) {
    m_IsWrong = true;
    m_Errors.push_back({m_Line.m_Number, column, std::move(message)});
    return false;
}

std::string QuotedForMessage(std::string_view text) {
    constexpr std::size_t kMostShown = 60; // whole characters of ASCII; others go as they are cut
    return '\'' + (text.size() > kMostShown ? std::string(text.substr(0, kMostShown)) + "..." : std::string(text)) +
           '\'';
}

std::string SuggestionFor(std::string_view written, std::span<const std::string_view> words) {
    const std::string_view near = NearestWord(written, words);
    return near.empty() ? std::string() : " (did you mean " + QuotedForMessage(near) + "?)";
}

} // namespace Corvid
