#pragma once

#include <cstdint>

#include "Engine/Archive/MeasuringArchive.h"
#include "Engine/DataStructures/DynamicArray.h"
#include "Engine/DataStructures/DynamicVector.h"
#include "Engine/DataStructures/FixedVector.h"

namespace Corvid {

// What the lists of records have in common while they are loaded.

// A count from a file is a claim. It is taken as it stands while the rest of the input could hold that many smallest
// elements, and for so many elements more; a larger one is cut to that, and reported.
inline constexpr std::int32_t kCountSlack = 4096;

std::int32_t BoundCount(Archive& archive, Label countLabel, std::int32_t claimed, const ElementSize& smallest);

// The number of elements that a file states for a fixed number of slots; any other is reported.
void CheckElementCount(std::int32_t elementCount, std::int32_t slotCount);

void ReportEntryWithoutClass(const char16_t* word, Label countLabel, std::int32_t index);

// Makes the container ready for `count` elements. Without the memory for them nothing more can be read.
template <class T> void BeginElements(Archive& archive, DynamicArray<T>& list, std::int32_t count) {
    if (!list.SetSize(count))
        archive.Stop();
}

template <class T> void BeginElements(Archive& archive, DynamicVector<T>& list, std::int32_t count) {
    if (!list.SetCapacity(count))
        archive.Stop();
}

template <class T, int MAX_SIZE> void BeginElements(Archive&, FixedVector<T, MAX_SIZE>&, std::int32_t) {}

template <class T> T& NextElement(DynamicArray<T>& list, std::int32_t index) {
    return list[index];
}

template <class T> T& NextElement(DynamicVector<T>& list, std::int32_t) {
    return list.Append();
}

template <class T, int MAX_SIZE> T& NextElement(FixedVector<T, MAX_SIZE>& list, std::int32_t) {
    return list.Append();
}

} // namespace Corvid
