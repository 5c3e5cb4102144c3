#pragma once

#include <cstddef>
#include <string>

namespace Corvid {

// Takes bytes, block by block.
class ByteSink {
public:
    virtual void WriteBlock(const char* bytes, std::size_t count) = 0;

protected:
    ~ByteSink() = default;
};

// Keeps them.
struct MemorySink final : ByteSink {
    void WriteBlock(const char* bytes, std::size_t count) override { m_Bytes.append(bytes, count); }

    std::string m_Bytes;
};

} // namespace Corvid
