#pragma once

#include <memory>

#include "Engine/DataStructures/ElementBuffer.h"
#include "Engine/Report/Reporter.h"

namespace Corvid {

// A number of elements that is set as a whole. Elements of a type with no initial value of its own (plain numbers,
// records of them) are not touched until they are assigned.
template <class T> class DynamicArray {
public:
    DynamicArray() = default;
    ~DynamicArray() { Destroy(); }
    DynamicArray(const DynamicArray&) = delete;
    DynamicArray& operator=(const DynamicArray&) = delete;

    int GetSize() const { return m_Buffer.GetCapacity(); }

    // Replaces everything by `size` default elements (none when it is negative). Without memory for them it is empty.
    void SetSize(int size) {
        Destroy();
        m_Buffer = ElementBuffer<T>();
        if (size <= 0)
            return;
        m_Buffer = ElementBuffer<T>(size);
        std::uninitialized_default_construct_n(begin(), GetSize());
    }

    T& operator[](int i) { return HasIndex(i) ? begin()[i] : SpareElement<T>(); }
    const T& operator[](int i) const { return HasIndex(i) ? begin()[i] : SpareElement<T>(); }

    T* begin() { return m_Buffer.GetElements(); }
    T* end() { return begin() + GetSize(); }
    const T* begin() const { return m_Buffer.GetElements(); }
    const T* end() const { return begin() + GetSize(); }

private:
    bool HasIndex(int i) const { return Check(i >= 0, "i >= 0") && Check(i < GetSize(), "i < size"); }
    void Destroy() { std::destroy(begin(), end()); }

    ElementBuffer<T> m_Buffer;
};

} // namespace Corvid
