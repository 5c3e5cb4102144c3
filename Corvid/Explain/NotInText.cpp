#include "Corvid/Explain/NotInText.h"

#include "Engine/String/Unicode.h"

namespace Corvid {

std::string ExplainNotInText(std::u16string_view text) {
    const char16_t* position = text.data();
    const char16_t* const end = position + text.size();
    while (position != end) {
        const char16_t unit = *position;
        const char32_t character = DecodeUtf16(position, end);
        switch (unit) {
        case u'"':
            return "the string holds a double quote, which text cannot hold";
        case u'\r':
        case u'\n':
            return "the string holds a line end, which text cannot hold";
        case 0:
            return "the string holds a NUL, which text cannot hold";
        default:
            if (character == kReplacementCharacter && unit != kReplacementCharacter)
                return "the string holds half a surrogate pair, which text cannot hold";
        }
    }
    return {};
}

} // namespace Corvid
