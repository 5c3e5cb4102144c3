#include "Fuzz/HeapWatch.h"

#include <malloc.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <new>

namespace Corvid::Fuzz {

namespace {

// Of a large block only the start is filled: the rest is mostly room that is never used, and touching it takes time.
constexpr std::size_t kMostFilled = 16 * 1024;

// One thread fuzzes; libFuzzer's own threads neither fill nor count.
struct Heap {
    bool m_IsWatched = false;
    unsigned char m_Fill = 0;
    std::ptrdiff_t m_Taken = 0;
    std::ptrdiff_t m_Peak = 0;
};

constinit thread_local Heap t_Heap;

void* Take(std::size_t size) {
    void* const memory = std::malloc(size);
    if (memory == nullptr || !t_Heap.m_IsWatched)
        return memory;
    std::memset(memory, t_Heap.m_Fill, std::min(size, kMostFilled));
    t_Heap.m_Taken += static_cast<std::ptrdiff_t>(malloc_usable_size(memory));
    t_Heap.m_Peak = std::max(t_Heap.m_Peak, t_Heap.m_Taken);
    return memory;
}

void* TakeOrThrow(std::size_t size) {
    void* const memory = Take(size);
    if (memory == nullptr)
        throw std::bad_alloc();
    return memory;
}

void GiveBack(void* memory) {
    if (memory != nullptr && t_Heap.m_IsWatched)
        t_Heap.m_Taken -= static_cast<std::ptrdiff_t>(malloc_usable_size(memory));
    std::free(memory);
}

[[gnu::noinline, clang::no_sanitize("address", "undefined")]] void FillStack(unsigned char fill) {
    unsigned char stack[64 * 1024];
    std::memset(stack, fill, sizeof stack);
    asm volatile("" : : "r"(stack) : "memory"); // someone might look
}

} // namespace

HeapWatch::HeapWatch(unsigned char fill) {
    FillStack(fill);
    t_Heap = {true, fill, 0, 0};
}

HeapWatch::~HeapWatch() {
    t_Heap.m_IsWatched = false;
}

std::size_t HeapWatch::GetPeak() const {
    return static_cast<std::size_t>(t_Heap.m_Peak);
}

} // namespace Corvid::Fuzz

void* operator new(std::size_t size) {
    return Corvid::Fuzz::TakeOrThrow(size);
}
void* operator new[](std::size_t size) {
    return Corvid::Fuzz::TakeOrThrow(size);
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return Corvid::Fuzz::Take(size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return Corvid::Fuzz::Take(size);
}
void operator delete(void* memory) noexcept {
    Corvid::Fuzz::GiveBack(memory);
}
void operator delete[](void* memory) noexcept {
    Corvid::Fuzz::GiveBack(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    Corvid::Fuzz::GiveBack(memory);
}
void operator delete[](void* memory, std::size_t) noexcept {
    Corvid::Fuzz::GiveBack(memory);
}
void operator delete(void* memory, const std::nothrow_t&) noexcept {
    Corvid::Fuzz::GiveBack(memory);
}
void operator delete[](void* memory, const std::nothrow_t&) noexcept {
    Corvid::Fuzz::GiveBack(memory);
}
