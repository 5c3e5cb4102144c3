#include "Engine/Archive/Archive.h"

#include <algorithm>
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

std::uint64_t Archive::TakeElements(std::uint64_t count, std::uint64_t memoryOfOne) {
    const std::uint64_t size = GetInputSize(); // may shrink, when a file turns out shorter than it was
    const auto left = [size](std::uint64_t perByte, std::uint64_t taken) {
        return size * perByte > taken ? size * perByte - taken : 0;
    };
    count = std::min(count, left(kElementsPerByte, m_ElementsTaken));
    if (memoryOfOne > 0)
        count = std::min(count, left(kMemoryPerByte, m_MemoryTaken) / memoryOfOne);
    m_ElementsTaken += count;
    m_MemoryTaken += count * memoryOfOne;
    return count;
}

std::uint64_t Archive::TakeSlack(std::uint64_t count) {
    count = std::min(count, kMostSlack - m_SlackTaken);
    m_SlackTaken += count;
    return count;
}

std::int32_t BoundCount(Archive& archive, Label countLabel, std::int32_t claimed, const ElementSize& smallest,
                        std::size_t memoryOfOne) {
    const auto count = static_cast<std::uint64_t>(claimed);
    const std::uint64_t fitting = std::min(count, archive.CountThatFits(smallest));
    std::uint64_t bound = archive.TakeElements(fitting, memoryOfOne);
    bound += archive.TakeSlack(std::min<std::uint64_t>(count - bound, kCountSlack));
    if (bound < count)
        ReportMessage(Message::CountCut, {std::string_view(LabelText(countLabel)), claimed, bound});
    return static_cast<std::int32_t>(bound);
}

void CheckElementCount(std::int32_t elementCount, std::int32_t slotCount) {
    Check(elementCount == slotCount, "elementCount == data->Size()");
}

void ReportEntryWithoutClass(const char16_t* word, Label countLabel, std::int32_t index) {
    ReportMessage(Message::EntryWithoutClass,
                  {std::u16string_view(word), std::string_view(LabelText(countLabel)), index});
}

} // namespace Corvid
