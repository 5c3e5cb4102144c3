#include "Corvid/Svg/SvgText.h"

#include "Engine/String/Unicode.h"

namespace Corvid {

namespace {

bool IsForbidden(char32_t character) {
    return character < 0x20 || (character & 0xFFFFFFFE) == 0xFFFE;
}

} // namespace

std::string SvgText(std::u16string_view text) {
    std::string result;
    const char16_t* position = text.data();
    const char16_t* const end = position + text.size();
    while (position != end) {
        const char32_t character = DecodeUtf16(position, end);
        switch (character) {
        case '&':
            result += "&amp;";
            break;
        case '<':
            result += "&lt;";
            break;
        case '>':
            result += "&gt;";
            break;
        case '"':
            result += "&quot;";
            break;
        case '\t':
        case '\n':
        case '\r':
            result += "&#" + std::to_string(static_cast<int>(character)) + ";";
            break;
        default:
            char bytes[kMaxUtf8Bytes];
            result.append(bytes, EncodeUtf8(bytes, IsForbidden(character) ? kReplacementCharacter : character));
        }
    }
    return result;
}

} // namespace Corvid
