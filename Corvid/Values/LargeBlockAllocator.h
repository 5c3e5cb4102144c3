#pragma once

#include <cstddef>
#include <new>

#ifdef __linux__
#include <sys/mman.h>
#endif

namespace Corvid {

// For vectors of millions of small elements: asks the system for large pages. Taking 100 MB in pages of 4 KiB costs
// more than filling them. Where there are none, it is an allocator like any other.
template <class T> class LargeBlockAllocator {
public:
    using value_type = T;

    LargeBlockAllocator() = default;
    template <class Other> LargeBlockAllocator(const LargeBlockAllocator<Other>&) {}

    T* allocate(std::size_t count) {
        if (count > static_cast<std::size_t>(-1) / sizeof(T))
            throw std::bad_array_new_length();
        const std::size_t size = count * sizeof(T);
        if (size < kLeastSize)
            return static_cast<T*>(::operator new(size));
        void* const block = ::operator new(size, kAlignment);
#ifdef __linux__
        madvise(block, size, MADV_HUGEPAGE); // a wish
#endif
        return static_cast<T*>(block);
    }

    void deallocate(T* block, std::size_t count) {
        if (count * sizeof(T) < kLeastSize)
            ::operator delete(block);
        else
            ::operator delete(block, kAlignment);
    }

    friend bool operator==(const LargeBlockAllocator&, const LargeBlockAllocator&) {
        return true;
    }

private:
    static constexpr std::size_t kLeastSize = 4 * 1024 * 1024; // bytes
    static constexpr std::align_val_t kAlignment{2 * 1024 * 1024};
};

} // namespace Corvid
