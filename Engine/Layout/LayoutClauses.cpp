#include "Engine/Layout/LayoutClauses.h"

#include <algorithm>
#include <charconv>

#include "Engine/Layout/LayoutParser.h"
#include "Engine/String/Unicode.h"

namespace Corvid {

namespace {

bool TakeSeenNumbers(LayoutTokens& line, LayoutNode& node) {
    while (!line.IsAtEnd()) {
        const LayoutToken& token = line.Take();
        std::int32_t number = 0;
        const char* const end = token.m_Text.data() + token.m_Text.size();
        const auto [rest, error] = std::from_chars(token.m_Text.data(), end, number);
        if (token.m_IsQuoted || error != std::errc() || rest != end)
            return line.Fail(token.m_Column, QuotedForMessage(token.m_Text) + " is not a number" +
                                                 (node.m_Kind == LayoutKind::Count ? " that a count can have" : ""));
        node.m_Doubt.m_SeenNumbers.push_back(number);
    }
    return true;
}

bool TakeSeenBools(LayoutTokens& line, LayoutDoubt& doubt) {
    while (!line.IsAtEnd()) {
        const LayoutToken& token = line.Take();
        if (!token.Is("TRUE") && !token.Is("FALSE"))
            return line.Fail(token.m_Column, "here stands TRUE or FALSE, the value that was seen");
        doubt.m_SeenBools.push_back(token.Is("TRUE"));
    }
    return true;
}

// That the words, whose tokens begin at the place `first`, are some that the field has.
bool CheckWords(LayoutTokens& line, std::size_t first, const std::vector<std::u16string>& words,
                const LayoutNode& field, const std::string& shownLabel) {
    const auto unknown = std::find_if(words.begin(), words.end(), [&](const std::u16string& word) {
        return std::find(field.m_Words.begin(), field.m_Words.end(), word) == field.m_Words.end();
    });
    if (unknown == words.end())
        return true;
    std::vector<std::string> known;
    for (const std::u16string& word : field.m_Words)
        known.push_back(ToUtf8(word));
    const LayoutToken& token = line.GetToken(first + static_cast<std::size_t>(unknown - words.begin()));
    return line.Fail(token.m_Column,
                     shownLabel + " has no word " + QuotedForMessage(token.m_Text) +
                         SuggestionFor(token.m_Text, std::vector<std::string_view>(known.begin(), known.end())));
}

} // namespace

bool TakeCondition(LayoutTokens& line, const LayoutBuilder& builder, LayoutCondition& condition) {
    condition.m_IsNegated = line.TakeIf("not");
    if (line.IsAtEnd() || line.Peek().Is("=") || line.Peek().Is("?"))
        return line.Fail(line.GetColumn(), "the label of an earlier field is missing");
    const LayoutToken& label = line.Take();
    const std::string shown = QuotedForMessage(label.m_Text);
    condition.m_Field = builder.FindEarlier(label.m_Text);
    if (condition.m_Field == kNoLayoutIndex)
        return line.Fail(label.m_Column, "no field " + shown + " above, in this record or one around it");
    const LayoutNode& field = builder.GetNode(condition.m_Field);
    const bool hasWords = field.m_Kind == LayoutKind::Word || field.m_Kind == LayoutKind::String;
    const bool isBool = field.m_Kind == LayoutKind::Bool;
    if (!line.TakeIf("=")) {
        if (hasWords)
            return line.Fail(label.m_Column,
                             "of " + shown + " the words are missing: when " + LayoutWord(label.m_Text) + " = \"...\"");
        return isBool || line.Fail(label.m_Column, shown + " is neither a bool nor a word");
    }
    if (!hasWords)
        return line.Fail(label.m_Column, shown + " is no word" + (isBool ? "; a bool stands alone" : ""));
    const std::size_t first = line.GetPlace();
    return TakeWords(line, condition.m_Words) &&
           (field.m_Kind != LayoutKind::Word || CheckWords(line, first, condition.m_Words, field, shown));
}

bool TakeWords(LayoutTokens& line, std::vector<std::u16string>& words) {
    if (line.IsAtEnd() || !line.Peek().m_IsQuoted)
        return line.Fail(line.GetColumn(), "the words are missing: in quotes, one after the other");
    while (!line.IsAtEnd() && line.Peek().m_IsQuoted) {
        const LayoutToken& word = line.Take();
        words.push_back(ToUtf16(word.m_Text));
        if (words.back().size() > LayoutBounds::kMostWordUnits)
            return line.Fail(word.m_Column, "a word of more than 255 units");
        if (!line.IsAtEnd() && line.Peek().Is("=")) { // no word: the label of the next condition
            words.pop_back();
            line.GiveBack();
            break;
        }
    }
    return true;
}

bool TakeDoubt(LayoutTokens& line, LayoutNode& node) {
    const int column = line.GetColumn();
    node.m_IsDoubtful = line.TakeIf("?");
    if (!node.m_IsDoubtful)
        return true;
    switch (node.m_Kind) {
    case LayoutKind::Float:
    case LayoutKind::Double:
    case LayoutKind::Color:
        return true;
    case LayoutKind::Int:
    case LayoutKind::Int64:
        node.m_Doubt.m_IsOfWidth = line.TakeIf(node.m_Kind == LayoutKind::Int ? "int64" : "int");
        return !node.m_Doubt.m_IsOfWidth || TakeSeenNumbers(line, node);
    case LayoutKind::Count:
        return TakeSeenNumbers(line, node);
    case LayoutKind::Bool:
        return TakeSeenBools(line, node.m_Doubt);
    default:
        return line.Fail(column, "only numbers, colors, counts, bools and conditions can be in doubt");
    }
}

} // namespace Corvid
