#pragma once

#include <string_view>

namespace Corvid {

// The words of an enumeration, in the order of its values 0 to N-1. They are part of the file formats: exact and
// case-sensitive. The value -1 of every enumeration is "Invalid". Specialised as
//     template <> struct EnumWords<DecalKind> { static constexpr EnumWord Words[] = {u"Painted", u"Burned"}; };
using EnumWord = const char16_t*;

template <class Enum> struct EnumWords;

inline constexpr EnumWord kInvalidWord = u"Invalid";

template <class Enum>
concept HasEnumWords = requires {
    EnumWords<Enum>::Words;
};

template <HasEnumWords Enum> consteval int EnumWordCount() {
    return static_cast<int>(sizeof(EnumWords<Enum>::Words) / sizeof(EnumWord));
}

// The word at `value` of a table of `count`: "Invalid" for -1, null for any other value outside.
constexpr EnumWord WordAt(const EnumWord* words, int count, int value) {
    if (value == -1)
        return kInvalidWord;
    return value >= 0 && value < count ? words[value] : nullptr;
}

// The first value whose word equals `word`; -1 for "Invalid", and for anything else, which is reported.
int ValueOfWord(const EnumWord* words, int count, const char16_t* word);

template <HasEnumWords Enum> constexpr EnumWord WordOf(Enum value) {
    return WordAt(EnumWords<Enum>::Words, EnumWordCount<Enum>(), static_cast<int>(value));
}

template <HasEnumWords Enum> Enum EnumFromWord(const char16_t* word) {
    return static_cast<Enum>(ValueOfWord(EnumWords<Enum>::Words, EnumWordCount<Enum>(), word));
}

} // namespace Corvid
