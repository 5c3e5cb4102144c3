#include "Corvid/Explain/TornLabel.h"

#include "Engine/Archive/Text/TextLine.h"
#include "Engine/String/Unicode.h"

namespace Corvid {

namespace {

bool IsBlank(char32_t character) {
    constexpr char32_t kNoBreakSpace = 0xA0;
    constexpr char32_t kNarrowNoBreakSpace = 0x202F;
    constexpr char32_t kIdeographicSpace = 0x3000;
    constexpr char32_t kByteOrderMark = 0xFEFF;
    constexpr char32_t kLineSeparator = 0x2028;
    constexpr char32_t kParagraphSeparator = 0x2029;
    const bool isOfAWidth = character >= 0x2000 && character <= 0x200B; // from an en quad to no width at all
    return (character < 0x80 && IsWhiteSpace(static_cast<char>(character))) || isOfAWidth ||
           character == kNoBreakSpace || character == kLineSeparator || character == kParagraphSeparator ||
           character == kNarrowNoBreakSpace || character == kIdeographicSpace || character == kByteOrderMark;
}

bool BeginsValue(char32_t character) {
    return (character >= U'0' && character <= U'9') || character == U'-' || character == U'"' || character == U'[';
}

} // namespace

std::size_t FindEndOfTornLabel(std::string_view line, std::size_t start, std::string_view label) {
    const char* position = line.data() + start;
    const char* const end = line.data() + line.size();
    const char* behind = position; // the blanks
    bool hasBlank = false;         // in front of what stands at `behind`
    char32_t next = 0;
    const auto skipBlanks = [&] {
        hasBlank = false;
        for (next = 0; position != end; behind = position) {
            next = DecodeUtf8(position, end);
            if (!IsBlank(next))
                return;
            hasBlank = true;
            next = 0;
        }
    };
    for (const char letter : label) {
        behind = position;
        skipBlanks();
        if (next != static_cast<unsigned char>(letter))
            return 0;
    }
    behind = position;
    skipBlanks();
    return behind == end || hasBlank || BeginsValue(next) ? static_cast<std::size_t>(behind - line.data()) : 0;
}

} // namespace Corvid
