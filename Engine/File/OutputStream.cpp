#include "Engine/File/OutputStream.h"

#include <algorithm>
#include <cstring>

namespace Corvid {

OutputStream::OutputStream(ByteSink& sink) : m_Sink(sink) {
    SetWindow(kFirstWindowSize);
}

void OutputStream::SetWindow(std::size_t size) {
    m_Window = std::make_unique_for_overwrite<char[]>(size);
    m_WindowSize = size;
    m_Position = m_Window.get();
    m_Limit = m_Window.get() + size - kRoom;
}

void OutputStream::Write(const char* bytes, std::size_t count) {
    while (count > 0) {
        const std::size_t piece = std::min(count, kRoom);
        std::memcpy(m_Position, bytes, piece);
        Commit(m_Position + piece);
        bytes += piece;
        count -= piece;
    }
}

void OutputStream::Flush() {
    const bool isFull = m_Position > m_Limit;
    if (m_Position != m_Window.get())
        m_Sink.WriteBlock(m_Window.get(), static_cast<std::size_t>(m_Position - m_Window.get()));
    m_Position = m_Window.get();
    if (isFull && m_WindowSize < kWindowSize)
        SetWindow(kWindowSize);
}

} // namespace Corvid
