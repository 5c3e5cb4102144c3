#pragma once

#include <cstdint>

namespace Corvid {

// The least that one element takes in a file, out of its own field list. See SmallestElement in MeasuringArchive.h.
struct ElementSize {
    std::uint64_t m_BinaryBytes = 0;
    std::uint64_t m_LabelLetters = 0; // of all its labels together
};

// What an archive's input has for the elements of a list. The default is for input without a known end.
struct ElementRoom {
    static constexpr std::uint64_t kUnbounded = ~std::uint64_t{0};

    std::uint64_t m_BytesOfOne = 1; // the smallest element takes at least so many, and at least one
    std::uint64_t m_BytesLeft = kUnbounded;
    std::uint64_t m_InputSize = kUnbounded;
};

// A count in a file is a claim; how much of it is taken is decided here. So what a file makes a program allocate is
// bound by the file's size and by what its elements take in memory for what they take in a file.
//
// - Up to kFewElements are always taken, unasked.
// - A larger count is taken as far as the rest of the input can hold that many smallest elements.
// - All lists together share the input: each element that is taken uses up the bytes of a smallest one, and there are
//   as many as the input has. No sound file comes near that, since its elements do stand somewhere. Without it, a
//   file of many counts could claim its end over and over again.
// - Beyond that, kCountSlack elements of each list and kMostSlack of all, so that of a file that was cut short, or has
//   a few lines too few, what is there can still be used.
//
// For instance, a binary file of 1,000,000 bytes begins with a count of 50,000 vertices. A vertex takes 68 bytes in
// binary, so the rest of the input holds 14,705; these are taken, and 4,096 more as slack: 18,801, which is reported.
// A second list finds 60 bytes of the input unclaimed, wherever it stands: of a count of 5,000 triangles (16 bytes) it
// gets 3 and 4,096 as slack.
class ElementBudget {
public:
    static constexpr std::int32_t kFewElements = 64;
    static constexpr std::uint64_t kCountSlack = 4096;
    static constexpr std::uint64_t kMostSlack = 256 * 1024;

    // How many of `claimed` elements, more than a few, are taken.
    std::uint64_t Take(std::uint64_t claimed, const ElementRoom& room);

    // A negative count is taken as none without a report; whoever wants to know asks.
    void NoteNegativeCount() { m_HasNegativeCount = true; }
    bool HasNegativeCount() const { return m_HasNegativeCount; }

private:
    bool m_HasNegativeCount = false;
    std::uint64_t m_BytesTaken = 0;
    std::uint64_t m_SlackTaken = 0;
};

} // namespace Corvid
