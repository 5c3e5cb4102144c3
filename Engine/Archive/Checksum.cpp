#include "Engine/Archive/Checksum.h"

#include <algorithm>
#include <bit>

namespace Corvid {

namespace {

constexpr std::uint32_t kFnvOffset = 2166136261u;
constexpr std::uint32_t kFnvPrime = 16777619u;

std::uint16_t WordAt(std::uint64_t bits, int index) {
    return static_cast<std::uint16_t>(bits >> (16 * index));
}

} // namespace

void Checksum::AddFloat(float value) {
    const auto bits = std::bit_cast<std::uint64_t>(static_cast<double>(value));
    const std::uint16_t words[] = {WordAt(bits, 0), WordAt(bits, 1)};
    m_Sum += Fletcher32(words, 2);
}

void Checksum::AddDouble(double value) {
    const auto bits = std::bit_cast<std::uint64_t>(value);
    const std::uint16_t words[] = {WordAt(bits, 0), WordAt(bits, 1), WordAt(bits, 2), WordAt(bits, 3)};
    m_Sum += Fletcher32(words, 4);
}

void Checksum::AddString(const char16_t* text) {
    std::uint32_t hash = kFnvOffset;
    for (; *text != 0; ++text) {
        hash = (hash ^ (*text & 0xFFu)) * kFnvPrime;
        hash = (hash ^ (*text >> 8)) * kFnvPrime;
    }
    m_Sum += hash;
}

std::uint32_t Fletcher32(const std::uint16_t* words, std::size_t count) {
    constexpr std::size_t kWordsBetweenFolds = 360; // as many as cannot overflow 32 bits
    const auto fold = [](std::uint32_t sum) { return (sum & 0xFFFF) + (sum >> 16); };
    std::uint32_t sum1 = 0xFFFF;
    std::uint32_t sum2 = 0xFFFF;
    while (count > 0) {
        const std::size_t block = std::min(count, kWordsBetweenFolds);
        for (std::size_t i = 0; i < block; ++i) {
            sum1 += words[i];
            sum2 += sum1;
        }
        words += block;
        count -= block;
        sum1 = fold(sum1);
        sum2 = fold(sum2);
    }
    return fold(sum2) << 16 | fold(sum1);
}

} // namespace Corvid
