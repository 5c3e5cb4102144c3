#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "Engine/Archive/MeasuringArchive.h"
#include "Engine/DataStructures/DynamicArray.h"
#include "Engine/DataStructures/DynamicVector.h"
#include "Engine/DataStructures/FixedVector.h"

namespace Corvid {

// What the lists of records have in common while they are loaded.

// What is taken of a count of more than a few; a cut is reported.
std::int32_t BoundCount(Archive& archive, Label countLabel, std::int32_t claimed, const ElementSize& smallest);

// The number of elements that a file states for a fixed number of slots; any other is reported.
void CheckElementCount(std::int32_t elementCount, std::int32_t slotCount);

void ReportEntryWithoutClass(const char16_t* word, Label countLabel, std::int32_t index);

// Makes the container ready for `count` elements.
template <class T> void BeginElements(DynamicArray<T>& list, std::int32_t count) {
    list.SetSize(count);
}

template <class T> void BeginElements(DynamicVector<T>& list, std::int32_t count) {
    list.SetCapacity(count);
}

template <class T, int MAX_SIZE> void BeginElements(FixedVector<T, MAX_SIZE>&, std::int32_t) {}

// Whether a fixed capacity is used up: what a file holds beyond it is read before that is reported, and dropped.
constexpr bool IsFull(const auto&) {
    return false;
}
template <class T, int MAX_SIZE> bool IsFull(const FixedVector<T, MAX_SIZE>& list) {
    return list.GetSize() == MAX_SIZE;
}

template <class T> T& NextElement(DynamicArray<T>& list, std::int32_t index) {
    return list[index];
}

template <class T> T& NextElement(DynamicVector<T>& list, std::int32_t) {
    return list.Append();
}

template <class T, int MAX_SIZE> T& NextElement(FixedVector<T, MAX_SIZE>& list, std::int32_t) {
    return list.Append();
}

// Gives the elements that loading did not reach, however it ended, their initial value: a type without one of its own
// would carry whatever stood in memory into a file.
template <class List> class ElementsNotReached {
public:
    ElementsNotReached(List&, const std::int32_t&) {}
};

template <class T> class ElementsNotReached<DynamicArray<T>> {
public:
    ElementsNotReached(DynamicArray<T>& list, const std::int32_t& reached) : m_List(list), m_Reached(reached) {}
    ~ElementsNotReached() {
        if constexpr (std::is_trivially_default_constructible_v<T>)
            std::fill(m_List.begin() + std::min(m_Reached, m_List.GetSize()), m_List.end(), T{});
    }
    ElementsNotReached(const ElementsNotReached&) = delete;
    ElementsNotReached& operator=(const ElementsNotReached&) = delete;

private:
    DynamicArray<T>& m_List;
    const std::int32_t& m_Reached;
};

} // namespace Corvid
