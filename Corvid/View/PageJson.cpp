#include "Corvid/View/PageJson.h"

#include <cstdio>

#include "Engine/String/Unicode.h"

namespace Corvid {

std::string WithoutMarkup(std::string_view json) {
    std::string result;
    result.reserve(json.size());
    for (const char c : json) {
        if (c == '<')
            result += "\\u003c";
        else
            result += c;
    }
    return result;
}

std::string PageString(std::string_view text) {
    std::string result = "\"";
    for (const char *position = text.data(), *end = position + text.size(); position != end;) {
        const char32_t character = DecodeUtf8(position, end);
        if (character < 0x20 || character == U'<' || character == U'"' || character == U'\\' || character == 0x7F) {
            char escape[8];
            std::snprintf(escape, sizeof escape, "\\u%04x", static_cast<unsigned>(character));
            result += escape;
        } else {
            char encoded[kMaxUtf8Bytes];
            result.append(encoded, EncodeUtf8(encoded, character));
        }
    }
    return result + '"';
}

} // namespace Corvid
