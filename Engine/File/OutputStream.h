#pragma once

#include <cstddef>
#include <memory>

#include "Engine/File/ByteSink.h"

namespace Corvid {

// Output gathered in one small, reused window and handed on in blocks.
class OutputStream {
public:
    static constexpr std::size_t kWindowSize = 256 * 1024;     // bytes
    static constexpr std::size_t kFirstWindowSize = 32 * 1024; // all that a small file needs
    static constexpr std::size_t kRoom = 8 * 1024;             // bytes that may be written at the position at any time

    explicit OutputStream(ByteSink& sink); // which outlives the stream

    char* GetPosition() { return m_Position; }

    // Takes the bytes from the position to `end`, kRoom at the most. Room is made behind a value, not in front of the
    // next, so that the writing of a value needs no check and ends in a tail call at the worst.
    void Commit(char* end) {
        m_Position = end;
        if (end > m_Limit) [[unlikely]]
            Flush();
    }

    void Write(const char* bytes, std::size_t count); // any number
    void Flush();

private:
    void SetWindow(std::size_t size);

    ByteSink& m_Sink;
    std::unique_ptr<char[]> m_Window;
    std::size_t m_WindowSize;
    char* m_Position;
    char* m_Limit; // kRoom in front of the window's end
};

} // namespace Corvid
