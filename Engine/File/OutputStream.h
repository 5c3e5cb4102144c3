#pragma once

#include <cstddef>
#include <memory>

namespace Corvid {

class ByteSink {
public:
    virtual void WriteBlock(const char* bytes, std::size_t count) = 0;

protected:
    ~ByteSink() = default;
};

// Output gathered in one small, reused window and handed on in blocks.
class OutputStream {
public:
    static constexpr std::size_t kWindowSize = 256 * 1024; // bytes

    explicit OutputStream(ByteSink& sink); // which outlives the stream

    // Room for `count` bytes (at most kWindowSize) at the returned place; Commit() takes those that were written.
    char* Reserve(std::size_t count) {
        if (static_cast<std::size_t>(m_Limit - m_Position) < count) [[unlikely]]
            Flush();
        return m_Position;
    }
    void Commit(char* end) { m_Position = end; }

    void Write(const char* bytes, std::size_t count);
    void Flush();

private:
    ByteSink& m_Sink;
    std::unique_ptr<char[]> m_Window;
    char* m_Position;
    char* m_Limit;
};

} // namespace Corvid
