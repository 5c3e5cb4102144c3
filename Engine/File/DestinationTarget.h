#pragma once

#include <cstddef>

namespace Corvid {

// One way for bytes to reach a destination. Destroyed without Close(), it leaves no trace where it can.
class DestinationTarget {
public:
    DestinationTarget() = default;
    virtual ~DestinationTarget() = default;
    DestinationTarget(const DestinationTarget&) = delete;
    DestinationTarget& operator=(const DestinationTarget&) = delete;

    // The number of bytes taken: `count`, or less after a failure.
    virtual std::size_t Write(const char* bytes, std::size_t count) = 0;

    // Called once, and only after every write took all its bytes. 0 when they stand in the destination.
    virtual int Close() = 0;
};

} // namespace Corvid
