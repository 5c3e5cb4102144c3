#include "Engine/String/EnumWords.h"

#include "Engine/Report/Reporter.h"
#include "Engine/String/StringLibrary.h"

namespace Corvid {

int ValueOfWord(const EnumWord* words, int count, const char16_t* word) {
    for (int i = 0; i < count; ++i) {
        if (Compare(word, words[i]) == 0)
            return i;
    }
    if (Compare(word, kInvalidWord) != 0)
        ReportMessage(Message::UnknownEnumWord, {std::u16string_view(word)});
    return -1;
}

} // namespace Corvid
