#pragma once

#include <set>
#include <string>
#include <string_view>

namespace Corvid {

// What decimals in text tell of the numbers behind them. Programs write six decimals, or the fewest that bring the
// value back, and what a float holds shows in the last of them: 123.456 becomes 123.456001. Decimals that a float gives
// time and again are no accident; decimals that no float gives were a double, or written by hand.
class DecimalEvidence {
public:
    void Add(std::string_view value);

    // Of all values; -1: they are few digits, or not round.
    int GetDecimalPlaces() const { return m_DecimalPlaces <= kMostRoundPlaces ? m_DecimalPlaces : -1; }

    bool IsFloat() const { return m_Bits >= kCertainBits && !m_IsNoFloat; }
    bool IsNoFloat() const { return m_IsNoFloat; } // some value was not written from a float

private:
    static constexpr double kCertainBits = 20.0; // that speak against chance
    static constexpr std::size_t kMostValues = 256;
    static constexpr int kMostRoundPlaces = 3;

    std::set<std::string, std::less<>> m_Values; // each counts once
    double m_Bits = 0.0;
    int m_DecimalPlaces = 0; // that the value with the most of them has
    bool m_IsNoFloat = false;
};

} // namespace Corvid
