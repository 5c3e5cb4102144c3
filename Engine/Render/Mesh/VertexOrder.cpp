#include "Engine/Render/Mesh/VertexOrder.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>
#include <utility>

namespace Corvid {

namespace {

constexpr std::uint32_t kNanKey = 0x7FC00000; // above infinity; one key for all NaN

// Below this many entries comparing is quicker than counting.
constexpr int kFewEntries = 512;

// Four digits cover the 31 bits of a non-negative float.
constexpr int kDigits = 4;
constexpr int kDigitBits = 8;
constexpr std::size_t kDigitValues = std::size_t(1) << kDigitBits;

std::uint32_t KeyBits(float radius, float coordinate) {
    const float distance = std::fabs(radius - coordinate);
    return std::isnan(distance) ? kNanKey : std::bit_cast<std::uint32_t>(distance);
}

std::size_t DigitOf(std::uint64_t entry, int digit) {
    return static_cast<std::size_t>(entry >> (32 + digit * kDigitBits)) & (kDigitValues - 1);
}

} // namespace

std::span<const std::uint64_t> VertexOrder::Sort(const DynamicArray<MeshVertex>& vertices, float radius,
                                                 float Vector3::*axis) {
    const int count = vertices.GetSize();
    if (m_Entries.GetSize() != count)
        m_Entries.SetSize(count);
    std::uint64_t* entry = m_Entries.begin();
    std::uint64_t index = 0;
    for (const MeshVertex& vertex : vertices)
        *entry++ = std::uint64_t(KeyBits(radius, vertex.m_Position.*axis)) << 32 | index++;
    if (count >= kFewEntries)
        return SortByRadix();
    std::sort(m_Entries.begin(), m_Entries.end());
    return {m_Entries.begin(), m_Entries.end()};
}

// Least digit first and stable, so that entries of one key stay in index order. Linear, whatever the keys are.
std::span<const std::uint64_t> VertexOrder::SortByRadix() {
    const int count = m_Entries.GetSize();
    if (m_Scratch.GetSize() != count)
        m_Scratch.SetSize(count);
    std::uint32_t places[kDigits][kDigitValues] = {};
    for (const std::uint64_t entry : m_Entries) {
        for (int digit = 0; digit < kDigits; ++digit)
            ++places[digit][DigitOf(entry, digit)];
    }
    std::uint64_t* from = m_Entries.begin();
    std::uint64_t* to = m_Scratch.begin();
    for (int digit = 0; digit < kDigits; ++digit) {
        std::uint32_t* const place = places[digit];
        if (place[DigitOf(*from, digit)] == static_cast<std::uint32_t>(count))
            continue; // the same digit in every key
        std::uint32_t start = 0;
        for (std::size_t value = 0; value < kDigitValues; ++value)
            start += std::exchange(place[value], start);
        for (const std::uint64_t* entry = from; entry != from + count; ++entry)
            to[place[DigitOf(*entry, digit)]++] = *entry;
        std::swap(from, to);
    }
    return {from, static_cast<std::size_t>(count)};
}

} // namespace Corvid
