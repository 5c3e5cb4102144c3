#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace Corvid {

enum class SourceError {
    None,
    Endless, // an irregular source that outgrew the largest stream
    Failed,  // the system refused a read
};

// A path opened once for reading, front to back, in binary. Pipes and devices are read like files: their next byte is
// waited for, however long that takes, but not more than so many bytes are taken. Nothing is ever written: a kill costs
// nothing and any number of runs may share a source. A file that is rewritten meanwhile gives some mixture of its
// bytes, never more than its size when opened.
class SourceFile {
public:
    static constexpr std::uint64_t kLargestStream = std::uint64_t(256) << 20; // bytes
    static constexpr int kPatienceMilliseconds = 5000; // longest wait for another program that holds the file

    explicit SourceFile(std::uint64_t largestStream = kLargestStream) : m_LargestStream(largestStream) {}
    ~SourceFile() { Close(); }
    SourceFile(const SourceFile&) = delete;
    SourceFile& operator=(const SourceFile&) = delete;

    // False when the path cannot be opened for reading; a folder counts as such.
    bool Open(std::u16string_view path);

    // A regular file of a known, non-zero size. Everything else is irregular: its size is known at its end only.
    bool IsRegular() const { return m_IsRegular; }
    std::uint64_t GetSize() const { return m_Size; } // bytes when opened; 0 when irregular

    // Fills `bytes` as far as the source reaches: fewer than `capacity` only at the end or after an error.
    std::size_t Read(char* bytes, std::size_t capacity);
    SourceError GetError() const { return m_Error; }

    // 0 when the system closed the file cleanly (or nothing was open).
    int Close();

private:
    // One read of at most `capacity` bytes, waited for; 0 at the end or after an error.
    std::size_t ReadSome(char* bytes, std::size_t capacity);

    std::uint64_t m_LargestStream;
    std::intptr_t m_Handle = -1;
    bool m_IsRegular = false;
    bool m_MayBlock = false; // another process shares the descriptor and its settings
    bool m_IsAtEnd = true;
    std::uint64_t m_Size = 0;
    std::uint64_t m_BytesRead = 0;
    SourceError m_Error = SourceError::None;
};

} // namespace Corvid
