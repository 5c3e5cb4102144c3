#include "Engine/File/SourceFile.h"

#include <algorithm>

namespace Corvid {

std::size_t SourceFile::Read(char* bytes, std::size_t capacity) {
    std::size_t taken = 0;
    while (taken < capacity && !m_IsAtEnd) {
        const std::uint64_t bound = m_IsRegular ? m_Size : m_LargestStream;
        const std::uint64_t left = bound - m_BytesRead;
        char beyond;
        if (left > 0) {
            const std::size_t wanted = static_cast<std::size_t>(std::min<std::uint64_t>(left, capacity - taken));
            const std::size_t count = ReadSome(bytes + taken, wanted);
            taken += count;
            m_BytesRead += count;
        } else if (m_IsRegular) {
            m_IsAtEnd = true; // what was appended since is left alone
        } else if (ReadSome(&beyond, 1) > 0) {
            m_IsAtEnd = true;
            m_Error = SourceError::Endless;
        }
    }
    return taken;
}

} // namespace Corvid
