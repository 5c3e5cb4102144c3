#pragma once

#include <cstddef>
#include <cstdint>

namespace Corvid {

// The running sum of the values that an archive has read: 32 bits, with wrap-around. It never reaches a file; an owner
// may compare it to find out that data differ.
class Checksum {
public:
    std::uint32_t GetValue() const { return m_Sum; }

    void AddInt(std::uint32_t value) { m_Sum += value; }
    void AddFloat(float value);           // the Fletcher-32 sum of the low half of the value as a double
    void AddDouble(double value);         // the Fletcher-32 sum of all its bits
    void AddString(const char16_t* text); // FNV-1a over the UTF-16 units

private:
    std::uint32_t m_Sum = 0;
};

// The classic one over 16-bit words: both sums start at 0xFFFF and are folded every 360 words.
std::uint32_t Fletcher32(const std::uint16_t* words, std::size_t count);

} // namespace Corvid
