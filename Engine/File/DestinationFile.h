#pragma once

#include <cstddef>
#include <memory>
#include <string_view>

namespace Corvid {

// A path to be replaced by new content, all or nothing: until Close() the old file stands untouched, afterwards the
// whole new one does. Destroyed without Close(), or after a failed write, it leaves everything as it was.
//
// An ordinary file is written to a temporary beside it, which then takes its name. A symbolic link is written
// through. A file with several hard links, or one in a folder that takes no temporary, is rewritten in place from
// memory. A device or FIFO is written directly.
class DestinationFile {
public:
    DestinationFile();
    ~DestinationFile();
    DestinationFile(const DestinationFile&) = delete;
    DestinationFile& operator=(const DestinationFile&) = delete;

    // False when the path cannot be written: a folder, a read-only file, a missing folder.
    bool Open(std::u16string_view path);

    // The number of bytes taken: `count`, or less after a failure. A failure is remembered by Close().
    std::size_t Write(const char* bytes, std::size_t count);

    // 0 when every byte stands in the destination; anything else means that the old file was kept.
    int Close();

private:
    class Target; // how the bytes reach this kind of destination
    std::unique_ptr<Target> m_Target;
};

} // namespace Corvid
