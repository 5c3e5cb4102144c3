#pragma once

#include <cstddef>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>

namespace Corvid {

// Memory for `count` elements of `size` bytes; std::bad_alloc when the system has none.
void* AllocateElements(std::size_t count, std::size_t size);

// Storage for a number of elements that is set once; which of them are constructed is the container's business, and
// the container destroys them before it lets the storage go.
template <class T> class ElementBuffer {
public:
    static_assert(alignof(T) <= alignof(std::max_align_t));

    ElementBuffer() = default;
    explicit ElementBuffer(int capacity)
        : m_Elements(static_cast<T*>(AllocateElements(static_cast<std::size_t>(capacity), sizeof(T)))),
          m_Capacity(capacity) {}
    ElementBuffer(ElementBuffer&& other) noexcept { Swap(other); }
    ElementBuffer& operator=(ElementBuffer&& other) noexcept {
        ElementBuffer taken(std::move(other));
        Swap(taken);
        return *this;
    }
    ~ElementBuffer() { ::operator delete(static_cast<void*>(m_Elements)); }

    T* GetElements() { return m_Elements; }
    const T* GetElements() const { return m_Elements; }
    int GetCapacity() const { return m_Capacity; }

private:
    void Swap(ElementBuffer& other) noexcept {
        std::swap(m_Elements, other.m_Elements);
        std::swap(m_Capacity, other.m_Capacity);
    }

    T* m_Elements = nullptr;
    int m_Capacity = 0;
};

// What a container hands out where no element is: a value of the thread's own that no file ever sees. It keeps the
// program memory-safe after a failed check.
template <class T> T& SpareElement() {
    static thread_local T spare;
    spare.~T();
    return *std::construct_at(&spare);
}

} // namespace Corvid
