#include "Engine/Archive/ArchiveValues.h"

namespace Corvid {

namespace {

EnumWord ArchivedWord(const EnumWord* words, int count, int value) {
    const EnumWord word = WordAt(words, count, value);
    return word != nullptr ? word : kInvalidWord;
}

} // namespace

void ReadWord(Archive& archive, Label label, const EnumWord* words, int count, int& value) {
    FixedString<kWordCapacity> word(ArchivedWord(words, count, value));
    ReadValue(archive, label, word);
    const PositionScope scope(&archive);
    value = ValueOfWord(words, count, word.GetText());
}

void WriteWord(Archive& archive, Label label, const EnumWord* words, int count, int value) {
    archive.WriteString(label, ArchivedWord(words, count, value));
}

} // namespace Corvid
