#include "Engine/Archive/Archive.h"

#include <string_view>

#include "Engine/Archive/ArchiveLists.h"
#include "Engine/Archive/LabelText.h"

namespace Corvid {

void Archivable::Load(Archive& archive, void*) {
    Load(archive);
}

void Archivable::ListFields(FieldListener&) const {}

void Archive::ReadEnum(Label label, std::int32_t& value) {
    ReadInt(label, value);
}

void Archive::WriteEnum(Label label, std::int32_t value) {
    WriteInt(label, value);
}

std::int32_t BoundCount(Archive& archive, Label countLabel, std::int32_t claimed, const ElementSize& smallest) {
    const std::uint64_t taken =
        archive.GetBudget().Take(static_cast<std::uint64_t>(claimed), archive.GetRoom(smallest));
    if (taken < static_cast<std::uint64_t>(claimed))
        ReportMessage(Message::CountCut, {std::string_view(LabelText(countLabel)), claimed, taken});
    return static_cast<std::int32_t>(taken);
}

void CheckElementCount(std::int32_t elementCount, std::int32_t slotCount) {
    Check(elementCount == slotCount, "elementCount == data->Size()");
}

void ReportEntryWithoutClass(const char16_t* word, Label countLabel, std::int32_t index) {
    ReportMessage(Message::EntryWithoutClass,
                  {std::u16string_view(word), std::string_view(LabelText(countLabel)), index});
}

} // namespace Corvid
