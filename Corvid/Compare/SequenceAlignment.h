#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace Corvid {

// A place in each of two sequences where they hold the same.
struct AlignedPair {
    std::uint32_t m_Before = 0;
    std::uint32_t m_After = 0;

    friend bool operator==(const AlignedPair&, const AlignedPair&) = default;
};

// The longest common subsequence, ascending on both sides; of sequences that have more in common than can be found out
// in time, a long one. Takes time in proportion to the length of both, whatever they hold.
std::vector<AlignedPair> AlignSequences(std::span<const std::uint64_t> before, std::span<const std::uint64_t> after);

// Of pairs in the order of their first place, each place once: which ones belong to a longest ascending run, among
// several to the one that keeps most of its places. The others changed their order.
std::vector<bool> FindAscending(std::span<const AlignedPair> pairs);

} // namespace Corvid
