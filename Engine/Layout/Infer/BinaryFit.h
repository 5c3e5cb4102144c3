#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "Engine/Layout/Infer/PlausibleValue.h"
#include "Engine/Layout/Infer/ValueKinds.h"
#include "Engine/Layout/Layout.h"

namespace Corvid {

// What is open of a layout before binary samples are read: of a number its kinds, of a condition its alternatives.
struct FitQuestion {
    const Layout& m_Layout;
    std::vector<KindSet> m_Kinds;      // by node; empty: the kind of the node is certain
    std::vector<NumberRange> m_Ranges; // by node
    std::uint64_t& m_StepsLeft;        // values to be read, at the most
};

struct FitAnswer {
    enum class Verdict { Undecided, Fits, FitsNot };

    Verdict m_Verdict = Verdict::Undecided;
    bool m_IsCertain = false; // all that was read could be read in one way only
    // By node; the choice is the index of a kind in the layout's enumeration, or 0 for a condition and 1 and so on for
    // its alternatives. Settled: no other choice that departs as little from what is usual reads all samples.
    struct Choice {
        int m_Choice = -1; // -1: no sample got there
        bool m_IsSettled = false;
        bool m_IsOfWidth = false; // but for whether it or a number beside it takes 8 bytes
    };
    std::vector<Choice> m_Choices;
    std::vector<std::uint8_t> m_SeenBools; // by node, bit 0: FALSE, bit 1: TRUE
    std::vector<std::vector<std::int32_t>>
        m_SeenNumbers;                     // by node, of integers (large ones as the largest) and counts; sorted
    std::vector<std::uint32_t> m_Sides[2]; // by node of a condition, samples where it is false, true
};

inline constexpr std::uint64_t kMostStepsOfType = 40'000'000; // in all questions about one type

inline constexpr std::size_t kMostFiles = 32; // that are read side by side

// Reads binary samples, of values alone, side by side by every assignment of kinds and conditions that departs least
// from what is usual (an integer, a float, the first condition). They must come out even, with values that somebody may
// have meant. The number of steps is bounded: what is not decided by then stays open.
FitAnswer FitBinaries(const FitQuestion& question, std::span<const std::string_view> files);

} // namespace Corvid
