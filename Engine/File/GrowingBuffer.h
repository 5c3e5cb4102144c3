#pragma once

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace Corvid {

// Bytes of unknown number, collected in memory; running out of it is an answer, not an exception.
class GrowingBuffer {
public:
    const char* GetBytes() const { return m_Bytes.get(); }
    std::size_t GetSize() const { return m_Size; }

    // False, with the content as it was, when memory is exhausted.
    bool Append(const char* bytes, std::size_t count) {
        if (count > m_Capacity - m_Size && !Reserve(count))
            return false;
        if (count > 0)
            std::memcpy(m_Bytes.get() + m_Size, bytes, count);
        m_Size += count;
        return true;
    }

private:
    struct Free {
        void operator()(char* bytes) const { std::free(bytes); }
    };

    bool Reserve(std::size_t count) {
        constexpr std::size_t kSmallest = 64 * 1024;
        const std::size_t half = m_Capacity / 2;
        const std::size_t extra = count > half ? count : half;
        if (extra > static_cast<std::size_t>(-1) - kSmallest - m_Capacity)
            return false;
        const std::size_t capacity = m_Capacity + extra + kSmallest;
        char* const moved = static_cast<char*>(std::realloc(m_Bytes.get(), capacity));
        if (moved == nullptr)
            return false;
        static_cast<void>(m_Bytes.release()); // realloc has taken it
        m_Bytes.reset(moved);
        m_Capacity = capacity;
        return true;
    }

    std::unique_ptr<char, Free> m_Bytes;
    std::size_t m_Size = 0;
    std::size_t m_Capacity = 0;
};

} // namespace Corvid
