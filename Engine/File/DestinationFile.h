#pragma once

#include <cstddef>
#include <memory>
#include <string_view>

namespace Corvid {

class DestinationTarget;

// A path to be replaced by new content, all or nothing: until Close() the old file stands untouched, afterwards the
// whole new one does. Destroyed without Close(), or after a failed write, it leaves everything as it was.
//
// An ordinary file is written to a temporary beside it, which then takes its name: a kill at any moment, a full disk
// or a size limit leaves the old file whole, and of two runs at once the last to close wins, whole. Where the system
// has files without a name, a kill leaves no temporary, but for the instant in which it bears a name of its own;
// elsewhere a kill may leave it behind. A symbolic link is written through.
//
// A file with several hard links, or one in a folder that takes no temporary, is rewritten in place from memory. Its
// space is reserved first, so a full disk still costs nothing, and two runs take turns; only a kill during the final
// copy can leave a mixture.
//
// A device or FIFO is written directly, with no way back; one that takes no bytes for the patience fails the write.
class DestinationFile {
public:
    static constexpr int kPatienceMilliseconds = 5000; // longest wait for a reader, a lock or another program

    explicit DestinationFile(int patienceMilliseconds = kPatienceMilliseconds);
    ~DestinationFile();
    DestinationFile(const DestinationFile&) = delete;
    DestinationFile& operator=(const DestinationFile&) = delete;

    // What the caller has just seen at the path. A file that comes in between is replaced.
    enum class Seen { Unknown, Nothing };

    // False when the path cannot be written: a folder, a read-only file, a missing folder.
    bool Open(std::u16string_view path, Seen seen = Seen::Unknown);

    // The number of bytes taken: `count`, or less after a failure. A failure is remembered by Close().
    std::size_t Write(const char* bytes, std::size_t count);

    // 0 when every byte stands in the destination; anything else means that the old file was kept.
    int Close();

private:
    static constexpr int kFailedToClose = -1;

    int m_PatienceMilliseconds;
    bool m_HasFailed = true;                     // or nothing is open
    std::unique_ptr<DestinationTarget> m_Target; // how the bytes reach this kind of destination
};

} // namespace Corvid
