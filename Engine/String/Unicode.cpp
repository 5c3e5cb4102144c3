#include "Engine/String/Unicode.h"

#include <cstdint>

namespace Corvid {

namespace {

// What may follow a leading byte: how many continuation bytes, and the narrower range of the first of them that keeps
// out overlong forms, surrogates and values above U+10FFFF.
struct Sequence {
    int m_Continuations;
    unsigned char m_FirstLow;
    unsigned char m_FirstHigh;
};

Sequence SequenceOf(unsigned char lead) {
    if (lead < 0xC2)
        return {0, 0, 0};
    if (lead < 0xE0)
        return {1, 0x80, 0xBF};
    if (lead < 0xF0)
        return {2, static_cast<unsigned char>(lead == 0xE0 ? 0xA0 : 0x80),
                static_cast<unsigned char>(lead == 0xED ? 0x9F : 0xBF)};
    if (lead < 0xF5)
        return {3, static_cast<unsigned char>(lead == 0xF0 ? 0x90 : 0x80),
                static_cast<unsigned char>(lead == 0xF4 ? 0x8F : 0xBF)};
    return {0, 0, 0};
}

} // namespace

char32_t DecodeUtf8(const char*& position, const char* end) {
    const auto lead = static_cast<unsigned char>(*position++);
    if (lead < 0x80)
        return lead;
    const Sequence sequence = SequenceOf(lead);
    if (sequence.m_Continuations == 0)
        return kReplacementCharacter;
    char32_t character = lead & (0x3Fu >> sequence.m_Continuations);
    for (int i = 0; i < sequence.m_Continuations; ++i) {
        if (position == end)
            return kReplacementCharacter;
        const auto byte = static_cast<unsigned char>(*position);
        const unsigned char low = i == 0 ? sequence.m_FirstLow : 0x80;
        const unsigned char high = i == 0 ? sequence.m_FirstHigh : 0xBF;
        if (byte < low || byte > high)
            return kReplacementCharacter;
        character = (character << 6) | (byte & 0x3Fu);
        ++position;
    }
    return character;
}

char32_t DecodeUtf16(const char16_t*& position, const char16_t* end) {
    const char32_t unit = *position++;
    if (IsHighSurrogate(unit) && position != end && IsLowSurrogate(*position)) {
        const char32_t low = *position++;
        return 0x10000 + ((unit - 0xD800) << 10) + (low - 0xDC00);
    }
    return IsHighSurrogate(unit) || IsLowSurrogate(unit) ? kReplacementCharacter : unit;
}

char* EncodeUtf8(char* out, char32_t character) {
    if (IsHighSurrogate(character) || IsLowSurrogate(character))
        character = kReplacementCharacter;
    const auto put = [&out](char32_t byte) { *out++ = static_cast<char>(byte); };
    if (character < 0x80) {
        put(character);
    } else if (character < 0x800) {
        put(0xC0 | (character >> 6));
        put(0x80 | (character & 0x3F));
    } else if (character < 0x10000) {
        put(0xE0 | (character >> 12));
        put(0x80 | ((character >> 6) & 0x3F));
        put(0x80 | (character & 0x3F));
    } else {
        put(0xF0 | (character >> 18));
        put(0x80 | ((character >> 12) & 0x3F));
        put(0x80 | ((character >> 6) & 0x3F));
        put(0x80 | (character & 0x3F));
    }
    return out;
}

void AppendUtf16(std::u16string& units, char32_t character) {
    if (character >= 0x10000) {
        units.push_back(HighSurrogate(character));
        units.push_back(LowSurrogate(character));
    } else {
        units.push_back(static_cast<char16_t>(character));
    }
}

bool IsHeldByText(std::u16string_view units) {
    const char16_t* position = units.data();
    const char16_t* const end = position + units.size();
    while (position != end) {
        const char16_t unit = *position;
        if (unit == 0 || unit == u'"' || unit == u'\r' || unit == u'\n')
            return false;
        if (DecodeUtf16(position, end) == kReplacementCharacter && unit != kReplacementCharacter)
            return false;
    }
    return true;
}

void AppendUtf8(std::string& text, std::u16string_view units) {
    const char16_t* position = units.data();
    const char16_t* const end = position + units.size();
    while (position != end) {
        char bytes[kMaxUtf8Bytes];
        text.append(bytes, EncodeUtf8(bytes, DecodeUtf16(position, end)));
    }
}

std::string ToUtf8(std::u16string_view units) {
    std::string text;
    text.reserve(units.size());
    AppendUtf8(text, units);
    return text;
}

std::u16string ToUtf16(std::string_view bytes) {
    std::u16string units;
    units.reserve(bytes.size());
    const char* position = bytes.data();
    const char* const end = position + bytes.size();
    while (position != end) {
        AppendUtf16(units, DecodeUtf8(position, end));
    }
    return units;
}

} // namespace Corvid
