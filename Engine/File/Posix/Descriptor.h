#pragma once

#include <sys/types.h>

#include <chrono>
#include <cstddef>
#include <string>

namespace Corvid {

// Owns a file descriptor.
class Descriptor {
public:
    Descriptor() = default;
    explicit Descriptor(int number) : m_Number(number) {}
    Descriptor(Descriptor&& other) noexcept : m_Number(other.Release()) {}
    Descriptor& operator=(Descriptor&& other) noexcept;
    ~Descriptor() { Close(); }

    bool IsOpen() const { return m_Number >= 0; }
    int Get() const { return m_Number; }
    int Release();
    int Close(); // 0 when the system closed it cleanly, or nothing was open

private:
    int m_Number = -1;
};

// Opens without inheriting and without blocking. Where only time helps (a FIFO that lacks its reader, a lease that
// another program has to give back) it tries again for the patience. On failure errno says why.
Descriptor OpenDescriptor(const std::string& path, int flags, mode_t mode, int patienceMilliseconds);

// The number in /dev/stdin, /dev/stdout, /dev/stderr, /dev/fd/N and /proc/self/fd/N; -1 for any other path.
int DescriptorNamedBy(const std::string& path);

// A second descriptor of an open file, for a name that cannot be opened anew: a socket, or a pipe of another user.
// Closed when the file is not open for `access` (O_RDONLY or O_WRONLY). Whether it blocks is its first owner's choice.
Descriptor DuplicateDescriptor(int number, int access);

// Waits until a read would not block: bytes are there, or the end is.
void AwaitInput(int number);

// False when the descriptor took no bytes for the patience, or when the budget of all waits together is used up.
bool AwaitOutput(int number, std::chrono::milliseconds patience, std::chrono::microseconds& budget);

// write() in full, EINTR and short writes seen to. The number of bytes taken; on fewer, errno says why.
std::size_t WriteFully(int number, const char* bytes, std::size_t count);

} // namespace Corvid
