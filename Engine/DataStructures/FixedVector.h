#pragma once

#include <memory>
#include <new>

#include "Engine/DataStructures/ElementBuffer.h"
#include "Engine/Report/Reporter.h"

namespace Corvid {

// Up to MAX_SIZE elements in place. Appending beyond that is reported and yields a spare element, so that what a file
// holds there can still be read and is dropped.
template <class T, int MAX_SIZE> class FixedVector {
public:
    FixedVector() = default;
    ~FixedVector() { Clear(); }
    FixedVector(const FixedVector&) = delete;
    FixedVector& operator=(const FixedVector&) = delete;

    static constexpr int GetCapacity() { return MAX_SIZE; }
    int GetSize() const { return m_CurrentSize; }

    T& Append() {
        if (!Check(m_CurrentSize < MAX_SIZE, "m_CurrentSize < MAX_SIZE"))
            return SpareElement<T>();
        return *new (m_Storage + sizeof(T) * static_cast<unsigned>(m_CurrentSize++)) T();
    }

    void Clear() {
        std::destroy(begin(), end());
        m_CurrentSize = 0;
    }

    T& operator[](int i) { return HasIndex(i) ? begin()[i] : SpareElement<T>(); }
    const T& operator[](int i) const { return HasIndex(i) ? begin()[i] : SpareElement<T>(); }

    T* begin() { return reinterpret_cast<T*>(m_Storage); }
    T* end() { return begin() + m_CurrentSize; }
    const T* begin() const { return reinterpret_cast<const T*>(m_Storage); }
    const T* end() const { return begin() + m_CurrentSize; }

private:
    bool HasIndex(int i) const { return Check(i >= 0, "i >= 0") && Check(i < m_CurrentSize, "i < m_CurrentSize"); }

    int m_CurrentSize = 0;
    alignas(T) unsigned char m_Storage[sizeof(T) * MAX_SIZE];
};

} // namespace Corvid
