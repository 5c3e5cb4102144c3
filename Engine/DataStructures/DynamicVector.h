#pragma once

#include <memory>
#include <new>

#include "Engine/DataStructures/ElementBuffer.h"
#include "Engine/Report/Reporter.h"

namespace Corvid {

// Elements appended up to a capacity that is set beforehand; it does not grow by itself.
template <class T> class DynamicVector {
public:
    DynamicVector() = default;
    ~DynamicVector() { Clear(); }
    DynamicVector(const DynamicVector&) = delete;
    DynamicVector& operator=(const DynamicVector&) = delete;

    int GetSize() const { return m_CurrentSize; }
    int GetCapacity() const { return m_Buffer.GetCapacity(); }

    // Drops everything, then makes room for `newMaxSize` elements.
    void SetCapacity(int newMaxSize) {
        Clear();
        m_Buffer = ElementBuffer<T>();
        if (Check(newMaxSize >= 0, "newMaxSize >= 0") && newMaxSize > 0)
            m_Buffer = ElementBuffer<T>(newMaxSize);
    }

    // A new default element; a spare one, and a report, when the vector is full.
    T& Append() {
        if (!Check(m_CurrentSize < GetCapacity(), "m_CurrentSize < m_MaxSize"))
            return SpareElement<T>();
        return *new (static_cast<void*>(m_Buffer.GetElements() + m_CurrentSize++)) T();
    }

    // Keeps the first `size` elements.
    void Truncate(int size) {
        if (size < 0 || size >= m_CurrentSize)
            return;
        std::destroy(begin() + size, end());
        m_CurrentSize = size;
    }

    void Clear() {
        std::destroy(begin(), end());
        m_CurrentSize = 0;
    }

    T& operator[](int i) { return HasIndex(i) ? begin()[i] : SpareElement<T>(); }
    const T& operator[](int i) const { return HasIndex(i) ? begin()[i] : SpareElement<T>(); }

    T* begin() { return m_Buffer.GetElements(); }
    T* end() { return begin() + m_CurrentSize; }
    const T* begin() const { return m_Buffer.GetElements(); }
    const T* end() const { return begin() + m_CurrentSize; }

private:
    bool HasIndex(int i) const { return Check(i >= 0, "i >= 0") && Check(i < m_CurrentSize, "i < m_CurrentSize"); }

    int m_CurrentSize = 0;
    ElementBuffer<T> m_Buffer;
};

} // namespace Corvid
