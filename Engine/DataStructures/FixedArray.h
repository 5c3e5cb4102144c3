#pragma once

#include "Engine/DataStructures/ElementBuffer.h"
#include "Engine/Report/Reporter.h"

namespace Corvid {

// MAX_SIZE elements, no more and no fewer. An index outside is reported and reaches a spare element.
template <class T, int MAX_SIZE> class FixedArray {
public:
    static constexpr int GetSize() { return MAX_SIZE; }

    T& operator[](int i) { return HasIndex(i) ? m_Elements[i] : SpareElement<T>(); }
    const T& operator[](int i) const { return HasIndex(i) ? m_Elements[i] : SpareElement<T>(); }

    T* begin() { return m_Elements; }
    T* end() { return m_Elements + MAX_SIZE; }
    const T* begin() const { return m_Elements; }
    const T* end() const { return m_Elements + MAX_SIZE; }

private:
    static bool HasIndex(int i) { return Check(i >= 0, "i >= 0") && Check(i < MAX_SIZE, "i < MAX_SIZE"); }

    T m_Elements[MAX_SIZE]{};
};

} // namespace Corvid
