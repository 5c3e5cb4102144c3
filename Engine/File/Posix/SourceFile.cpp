#include "Engine/File/SourceFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <string>

#include "Engine/File/NativePath.h"
#include "Engine/File/Posix/Descriptor.h"

namespace Corvid {

bool SourceFile::Open(std::u16string_view path) {
    Close();
    const std::string name = NativeFromPath(path);
    Descriptor file = OpenDescriptor(name, O_RDONLY, 0, kPatienceMilliseconds);
    m_MayBlock = !file.IsOpen();
    if (m_MayBlock)
        file = DuplicateDescriptor(DescriptorNamedBy(name), O_RDONLY);
    struct stat status;
    if (!file.IsOpen() || fstat(file.Get(), &status) != 0 || S_ISDIR(status.st_mode))
        return false;
    m_IsRegular = S_ISREG(status.st_mode) && status.st_size > 0;
    m_Size = m_IsRegular ? static_cast<std::uint64_t>(status.st_size) : 0;
    m_BytesRead = 0;
    m_Error = SourceError::None;
    m_IsAtEnd = false;
    m_Handle = file.Release();
    return true;
}

std::size_t SourceFile::ReadSome(char* bytes, std::size_t capacity) {
    const int file = static_cast<int>(m_Handle);
    // To a read, a FIFO that lacks its first writer looks ended; to a wait, one that has lost its last looks silent.
    bool waits = m_MayBlock || (!m_IsRegular && m_BytesRead == 0);
    for (;;) {
        if (waits)
            AwaitInput(file);
        const ssize_t count = read(file, bytes, capacity);
        if (count > 0)
            return static_cast<std::size_t>(count);
        if (count == 0 || (errno != EINTR && errno != EAGAIN)) {
            m_IsAtEnd = true;
            m_Error = count == 0 ? SourceError::None : SourceError::Failed;
            return 0;
        }
        waits = waits || errno == EAGAIN;
    }
}

int SourceFile::Close() {
    Descriptor file(static_cast<int>(m_Handle));
    m_Handle = -1;
    m_IsAtEnd = true;
    return file.Close();
}

} // namespace Corvid
