#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace Corvid {

// Text is UTF-8 in files and on the console, UTF-16 in memory. Ill-formed input never stops a conversion: each maximal
// ill-formed part of UTF-8, and each lone surrogate of UTF-16, becomes one U+FFFD.
inline constexpr char32_t kReplacementCharacter = 0xFFFD;
inline constexpr std::size_t kMaxUtf8Bytes = 4; // of one character; three for each UTF-16 unit at the most

constexpr bool IsHighSurrogate(char32_t unit) {
    return (unit & 0xFFFFFC00) == 0xD800;
}

constexpr bool IsLowSurrogate(char32_t unit) {
    return (unit & 0xFFFFFC00) == 0xDC00;
}

constexpr char16_t HighSurrogate(char32_t character) {
    return static_cast<char16_t>(0xD7C0 + (character >> 10));
}

constexpr char16_t LowSurrogate(char32_t character) {
    return static_cast<char16_t>(0xDC00 + (character & 0x3FF));
}

// Decodes the character at `position`, which must be below `end`, and moves `position` behind it.
char32_t DecodeUtf8(const char*& position, const char* end);
char32_t DecodeUtf16(const char16_t*& position, const char16_t* end);

// Writes 1 to kMaxUtf8Bytes bytes and returns their end; a surrogate is written as U+FFFD.
char* EncodeUtf8(char* out, char32_t character);

void AppendUtf16(std::u16string& units, char32_t character);
// Whether a quoted string of a text archive can hold the units, which has no escapes: no quote, no line end, no NUL, no
// half of a surrogate pair.
bool IsHeldByText(std::u16string_view units);

void AppendUtf8(std::string& text, std::u16string_view units);
std::string ToUtf8(std::u16string_view units);
std::u16string ToUtf16(std::string_view bytes);

} // namespace Corvid
