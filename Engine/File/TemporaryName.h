#pragma once

#include <array>
#include <cstdint>

namespace Corvid {

constexpr int kMostTemporaryNames = 16; // a name taken among 2^64 is bad luck once, not so often

// ".recast-<process id>-<16 hexadecimal digits>.tmp", terminated: hidden, and telling whose it was after a kill.
using TemporaryName = std::array<char, 48>;

TemporaryName MakeTemporaryName(std::uint32_t processId, std::uint64_t randomNumber);

} // namespace Corvid
