#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "Engine/File/ByteSink.h"

namespace Corvid {

class PositionSource;
class SourceFile;

// Bytes in memory that somebody else owns, InputStream::kPadding zero bytes behind them. Any number of streams may read
// them at once; they outlive each.
struct PaddedView {
    const char* m_Bytes;
    std::size_t m_Size; // without the padding
};

// Input seen through a window of memory. A regular file is streamed through one small, reused window; everything else
// is held as a whole.
class InputStream {
public:
    static constexpr std::size_t kWindowSize = 256 * 1024; // bytes
    static constexpr std::size_t kPadding = 64;            // zero bytes that may be read behind the window's end
    static constexpr std::size_t kLookahead = 2048;        // see HasLookahead

    // `source` and `path` (for reports) outlive the stream.
    InputStream(SourceFile& source, std::u16string_view path);
    explicit InputStream(std::string bytes);
    explicit InputStream(const PaddedView& bytes);

    // Whose position the reports of a faulty source carry from now on: an archive that lives as long as its file.
    void SetReader(const PositionSource& reader) { m_Reader = &reader; }

    // Shows every byte, from the position on, to `watcher` before anybody else reads it.
    void SetWatcher(ByteSink& watcher);

    const char* GetPosition() const { return m_Position; }
    const char* GetEnd() const { return m_End; } // of the window
    std::size_t GetAvailable() const { return static_cast<std::size_t>(m_End - m_Position); }
    void SetPosition(const char* position) { m_Position = position; } // within the window

    // Makes `count` bytes available (at most kWindowSize / 2), unless the input has fewer: then all there are, and
    // false. May move the window: positions taken before are void then.
    bool Ensure(std::size_t count) { return GetAvailable() >= count || Refill(count); }

    // Moves over `count` bytes, or over all there are; returns how many those were.
    std::uint64_t Skip(std::uint64_t count);

    // Whether kLookahead bytes, or else all the rest of the input, stand in the window.
    bool HasLookahead() const { return m_Position < m_LookaheadLimit; }

    std::uint64_t GetOffset() const; // of the position, from the start of the source (of its UTF-8 form, see below)
    std::uint64_t GetBytesLeft() const;
    std::uint64_t GetSize() const; // of the source; known like GetBytesLeft()

    // Hands out nothing more; offset and bytes left stay as they are.
    void Seal();

    // Reads the rest into memory. Needed once where the size of the source is not known beforehand.
    void BringIntoMemory();

    // Takes the rest as UTF-16 little-endian and goes on with its UTF-8 form, in memory.
    void ConvertFromUtf16();

private:
    bool Refill(std::size_t count);
    void ReadWindow();
    void HoldInMemory(std::string bytes);
    void SetWindow(const char* position, const char* end);

    SourceFile* m_Source = nullptr; // null once everything is in the window
    std::u16string_view m_Path;
    const PositionSource* m_Reader = nullptr;
    ByteSink* m_Watcher = nullptr;
    std::unique_ptr<char[]> m_Window;
    std::size_t m_WindowCapacity = 0;
    std::string m_Memory;

    const char* m_Position = nullptr;
    const char* m_End = nullptr;
    const char* m_LookaheadLimit = nullptr;
    std::uint64_t m_EndOffset = 0;   // of m_End, from the start of the source
    std::uint64_t m_Utf16Size = 0;   // bytes of a source that was converted
    std::uint64_t m_SealedBytes = 0; // behind m_End, after Seal()
};

} // namespace Corvid
