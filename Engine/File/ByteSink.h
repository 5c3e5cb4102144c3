#pragma once

#include <cstddef>

namespace Corvid {

// Takes bytes, block by block.
class ByteSink {
public:
    virtual void WriteBlock(const char* bytes, std::size_t count) = 0;

protected:
    ~ByteSink() = default;
};

} // namespace Corvid
