#include "Corvid/Values/ValueText.h"

#include "Engine/Math/Color.h"
#include "Engine/String/NumberFormatExact.h"
#include "Engine/String/Unicode.h"

namespace Corvid {

namespace {

// Decimals that are zero tell nothing, but for the first.
void AppendTrimmed(std::string& text, std::string_view number) {
    const std::size_t point = number.find('.');
    if (point != number.npos && number.find('e') == number.npos) {
        while (number.size() > point + 2 && number.back() == '0')
            number.remove_suffix(1);
    }
    text += number;
}

void AppendHex(std::string& text, std::uint32_t value, int digits) {
    for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4)
        text.push_back("0123456789abcdef"[value >> shift & 0xF]);
}

template <class Numbers, class Append>
void AppendBracketed(std::string& text, const Numbers& numbers, std::string_view separator, Append append) {
    text += "[ ";
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        if (i > 0)
            text += separator;
        append(numbers[i]);
    }
    text += " ]";
}

void AppendRows(std::string& text, std::span<const float> numbers, std::size_t width) {
    for (std::size_t i = 0; i < numbers.size(); i += width) {
        if (i > 0)
            text.push_back(' ');
        AppendChannels(text, numbers.subspan(i, width));
    }
}

} // namespace

void AppendFloatText(std::string& text, float value) {
    char number[kMaxFloatText + kFormatSlack];
    AppendTrimmed(text, {number, static_cast<std::size_t>(FormatFloatExact(number, value) - number)});
}

void AppendDoubleText(std::string& text, double value) {
    char number[kMaxDoubleText + kFormatSlack];
    AppendTrimmed(text, {number, static_cast<std::size_t>(FormatDoubleExact(number, value) - number)});
}

void AppendQuoted(std::string& text, std::u16string_view units) {
    text.push_back('"');
    const char16_t* position = units.data();
    const char16_t* const end = position + units.size();
    while (position != end) {
        const char16_t unit = *position;
        const char32_t character = DecodeUtf16(position, end);
        if (character == kReplacementCharacter && unit != kReplacementCharacter) {
            text += "\\u";
            AppendHex(text, unit, 4);
        } else if (character == '\t' || character == '\n' || character == '\r') {
            text.push_back('\\');
            text.push_back(character == '\t' ? 't' : character == '\n' ? 'n' : 'r');
        } else if (character < 0x20 || (character >= 0x7F && character < 0xA0)) {
            text += "\\x";
            AppendHex(text, unit, 2);
        } else {
            char bytes[kMaxUtf8Bytes];
            text.append(bytes, EncodeUtf8(bytes, character));
        }
    }
    text.push_back('"');
}

void AppendColorText(std::string& text, std::span<const float> channels) {
    text.push_back('#');
    AppendHex(text, PackColor({channels[0], channels[1], channels[2], channels[3]}), 8);
}

void AppendChannels(std::string& text, std::span<const float> channels) {
    AppendBracketed(text, channels, " ", [&text](float number) { AppendFloatText(text, number); });
}

void AppendValueText(std::string& text, const ValueTree& tree, const ValueNode& node) {
    switch (node.m_Kind) {
    case ValueKind::Bool:
        text += tree.GetBool(node) ? "TRUE" : "FALSE";
        break;
    case ValueKind::Int:
        text += std::to_string(tree.GetInt(node));
        break;
    case ValueKind::Int64:
        text += std::to_string(tree.GetInt64(node));
        break;
    case ValueKind::Float:
        AppendFloatText(text, tree.GetFloat(node));
        break;
    case ValueKind::Double:
        AppendDoubleText(text, tree.GetDouble(node));
        break;
    case ValueKind::String:
        AppendQuoted(text, tree.GetString(node));
        break;
    case ValueKind::Color:
        AppendColorText(text, tree.GetFloats(node));
        break;
    case ValueKind::Vector3:
    case ValueKind::Vector4:
        AppendChannels(text, tree.GetFloats(node));
        break;
    case ValueKind::Matrix33:
        AppendRows(text, tree.GetFloats(node), 3);
        break;
    case ValueKind::Matrix44:
        AppendRows(text, tree.GetFloats(node), 4);
        break;
    case ValueKind::Pair:
    case ValueKind::Rect:
        AppendBracketed(text, tree.GetInts(node), " , ",
                        [&text](std::int32_t number) { text += std::to_string(number); });
        break;
    case ValueKind::Record:
    case ValueKind::List:
        break;
    }
}

} // namespace Corvid
