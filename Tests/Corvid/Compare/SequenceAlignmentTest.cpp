#include "Corvid/Compare/SequenceAlignment.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string_view>

namespace Corvid {
namespace {

using Sequence = std::vector<std::uint64_t>;

// By the quadratic table.
std::size_t LongestInCommon(const Sequence& before, const Sequence& after) {
    std::vector<std::vector<std::size_t>> longest(before.size() + 1, std::vector<std::size_t>(after.size() + 1));
    for (std::size_t i = before.size(); i-- > 0;) {
        for (std::size_t j = after.size(); j-- > 0;)
            longest[i][j] =
                before[i] == after[j] ? longest[i + 1][j + 1] + 1 : std::max(longest[i + 1][j], longest[i][j + 1]);
    }
    return longest[0][0];
}

void ExpectAligned(const Sequence& before, const Sequence& after, const std::vector<AlignedPair>& pairs) {
    for (std::size_t i = 0; i < pairs.size(); ++i) {
        ASSERT_LT(pairs[i].m_Before, before.size());
        ASSERT_LT(pairs[i].m_After, after.size());
        EXPECT_EQ(before[pairs[i].m_Before], after[pairs[i].m_After]);
        if (i > 0) {
            EXPECT_LT(pairs[i - 1].m_Before, pairs[i].m_Before);
            EXPECT_LT(pairs[i - 1].m_After, pairs[i].m_After);
        }
    }
}

Sequence RandomSequence(std::mt19937& random, std::size_t size, std::uint32_t values) {
    Sequence sequence(size);
    for (std::uint64_t& value : sequence)
        value = random() % values;
    return sequence;
}

TEST(SequenceAlignment, FindsTheLongestOfSmallSequences) {
    std::mt19937 random(1);
    for (int round = 0; round < 2000; ++round) {
        const auto values = static_cast<std::uint32_t>(1 + random() % 6);
        const Sequence before = RandomSequence(random, random() % 14, values);
        const Sequence after = RandomSequence(random, random() % 14, values);
        const std::vector<AlignedPair> pairs = AlignSequences(before, after);
        ExpectAligned(before, after, pairs);
        EXPECT_EQ(pairs.size(), LongestInCommon(before, after)) << "round " << round;
    }
}

// Far beyond what one round of the search can do: in time, ascending, and most of what they have in common.
TEST(SequenceAlignment, HundredThousandElementsTakeNoQuadraticTime) {
    std::mt19937 random(2);
    struct Case {
        const char* name;
        std::uint32_t values;
        std::size_t least;
    };
    constexpr std::size_t kSize = 100'000;
    for (const Case& c : {Case{"AllDifferent", 0xFFFFFFFF, 0}, Case{"TwoValues", 2, kSize / 2},
                          Case{"FewValues", 100, kSize / 20}, Case{"OneValue", 1, kSize - 1}}) {
        SCOPED_TRACE(c.name);
        const Sequence before = RandomSequence(random, kSize, c.values);
        const Sequence after = RandomSequence(random, kSize - 1, c.values);
        const std::vector<AlignedPair> pairs = AlignSequences(before, after);
        ExpectAligned(before, after, pairs);
        EXPECT_GE(pairs.size(), c.least);
    }
}

TEST(SequenceAlignment, AscendingRunLeavesOutAsFewAsPossible) {
    struct Case {
        std::vector<std::uint32_t> after;
        std::size_t kept;
    };
    for (const Case& c : {Case{{}, 0}, Case{{0, 1, 2}, 3}, Case{{2, 0, 1}, 2}, Case{{1, 2, 0}, 2},
                          Case{{4, 3, 2, 1}, 1}, Case{{5, 0, 6, 1, 2, 7, 3}, 4}}) {
        std::vector<AlignedPair> pairs;
        for (const std::uint32_t after : c.after)
            pairs.push_back({static_cast<std::uint32_t>(pairs.size()), after});
        const std::vector<bool> kept = FindAscending(pairs);
        EXPECT_EQ(static_cast<std::size_t>(std::ranges::count(kept, true)), c.kept);
        std::int64_t last = -1;
        for (std::size_t i = 0; i < kept.size(); ++i) {
            if (!kept[i])
                continue;
            EXPECT_GT(pairs[i].m_After, last);
            last = pairs[i].m_After;
        }
    }
}

} // namespace
} // namespace Corvid
