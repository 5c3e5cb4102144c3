#pragma once

// What the inline ways of writing numbers share: digits leave in groups of three, each one load and one store.

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace Corvid::NumberDetail {

inline constexpr std::uint32_t kThousand = 1'000;
inline constexpr std::uint32_t kMillion = 1'000'000;

// For each group 000 to 999 its three digits, then how many zeros it starts with when it leads a number. Four more
// bytes, since leading groups are loaded from behind those zeros.
inline constexpr std::array<char, 4 * kThousand + 4> kDigitGroups = [] {
    std::array<char, 4 * kThousand + 4> groups{};
    for (std::size_t i = 0; i < kThousand; ++i) {
        groups[4 * i] = static_cast<char>('0' + i / 100);
        groups[4 * i + 1] = static_cast<char>('0' + i / 10 % 10);
        groups[4 * i + 2] = static_cast<char>('0' + i % 10);
        groups[4 * i + 3] = static_cast<char>(i < 10 ? 2 : i < 100 ? 1 : 0);
    }
    return groups;
}();

// Three digits; scribbles one byte behind them.
inline char* WriteGroup(char* out, std::uint32_t group) {
    std::memcpy(out, &kDigitGroups[4 * std::size_t{group}], 4);
    return out + 3;
}

// One to three digits; scribbles up to three bytes behind them.
inline char* WriteLeadingGroup(char* out, std::uint32_t group) {
    const std::size_t at = 4 * std::size_t{group};
    const auto zeros = static_cast<unsigned char>(kDigitGroups[at + 3]);
    std::memcpy(out, &kDigitGroups[at + zeros], 4);
    return out + 3 - zeros;
}

// An integer below 10^6.
inline char* WriteShortInteger(char* out, std::uint32_t value) {
    if (value < kThousand)
        return WriteLeadingGroup(out, value);
    out = WriteLeadingGroup(out, value / kThousand);
    return WriteGroup(out, value % kThousand);
}

// A point and six decimals.
inline char* WriteMillionths(char* out, std::uint32_t millionths) {
    *out = '.';
    WriteGroup(out + 1, millionths / kThousand);
    return WriteGroup(out + 4, millionths % kThousand);
}

} // namespace Corvid::NumberDetail
