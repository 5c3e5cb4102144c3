#include "Corvid/Compare/SequenceAlignment.h"

#include <algorithm>
#include <limits>
#include <unordered_set>
#include <utility>

namespace Corvid {

namespace {

// Myers' greedy search for the shortest edit script, in rounds: a round that has not come to the end after kMostEdits
// edits commits to the path that came furthest, and the next one goes on from there. So a round costs kMostEdits times
// what it gets ahead, at the most.
class EditSearch {
public:
    EditSearch(std::span<const std::uint64_t> before, std::span<const std::uint64_t> after)
        : m_Before(before), m_After(after) {}

    // Calls `match(before, after)` for each pair, last round last, within a round from its end to its start.
    template <class Match> void Run(Match match) {
        while (m_Begin.m_Before < m_Before.size() && m_Begin.m_After < m_After.size())
            RunRound(match);
    }

private:
    static constexpr int kMostEdits = 256;

    // The place furthest from the start that so many edits reach on each diagonal, as its distance along `before`. The
    // diagonal is that distance less the one along `after`; each number of edits reaches every second one.
    using Front = std::vector<std::int32_t>;

    std::int32_t GetBeforeSize() const { return static_cast<std::int32_t>(m_Before.size() - m_Begin.m_Before); }
    std::int32_t GetAfterSize() const { return static_cast<std::int32_t>(m_After.size() - m_Begin.m_After); }

    bool Same(std::int32_t x, std::int32_t y) const {
        return m_Before[m_Begin.m_Before + static_cast<std::uint32_t>(x)] ==
               m_After[m_Begin.m_After + static_cast<std::uint32_t>(y)];
    }

    static std::int32_t& At(Front& front, std::int32_t diagonal) {
        return front[static_cast<std::size_t>(diagonal + static_cast<std::int32_t>(front.size() / 2))];
    }

    // Whether `diagonal` is entered by putting in one of `after`, rather than by leaving out one of `before`, with one
    // edit more than those of `front`.
    static bool IsPutIn(Front& front, std::int32_t edits, std::int32_t diagonal) {
        return diagonal == -edits || (diagonal != edits && At(front, diagonal - 1) < At(front, diagonal + 1));
    }
    static std::int32_t Enter(Front& front, std::int32_t edits, std::int32_t diagonal) {
        return IsPutIn(front, edits, diagonal) ? At(front, diagonal + 1) : At(front, diagonal - 1) + 1;
    }

    template <class Match> void RunRound(Match match) {
        m_Fronts.clear();
        std::int32_t furthest = -1;
        std::int32_t furthestEdits = 0;
        std::int32_t furthestDiagonal = 0;
        bool isAtEnd = false;
        for (std::int32_t edits = 0; edits <= kMostEdits && !isAtEnd; ++edits) {
            m_Fronts.emplace_back(static_cast<std::size_t>(2 * edits + 3), kOutside);
            for (std::int32_t diagonal = -edits; diagonal <= edits && !isAtEnd; diagonal += 2) {
                std::int32_t x = edits == 0 ? 0 : Enter(m_Fronts[m_Fronts.size() - 2], edits, diagonal);
                if (x < 0 || x > GetBeforeSize() || x - diagonal > GetAfterSize())
                    continue; // beyond one of the ends
                while (x < GetBeforeSize() && x - diagonal < GetAfterSize() && Same(x, x - diagonal))
                    ++x;
                At(m_Fronts.back(), diagonal) = x;
                if (2 * x - diagonal > furthest) {
                    furthest = 2 * x - diagonal;
                    furthestEdits = edits;
                    furthestDiagonal = diagonal;
                }
                isAtEnd = x == GetBeforeSize() && x - diagonal == GetAfterSize();
            }
        }
        Commit(furthestEdits, furthestDiagonal, match);
    }

    template <class Match> void Commit(std::int32_t edits, std::int32_t diagonal, Match match) {
        std::int32_t x = At(m_Fronts[static_cast<std::size_t>(edits)], diagonal);
        const AlignedPair end = {m_Begin.m_Before + static_cast<std::uint32_t>(x),
                                 m_Begin.m_After + static_cast<std::uint32_t>(x - diagonal)};
        while (true) {
            Front* const previous = edits == 0 ? nullptr : &m_Fronts[static_cast<std::size_t>(edits - 1)];
            const std::int32_t entered = previous == nullptr ? 0 : Enter(*previous, edits, diagonal);
            for (; x > entered; --x)
                match(m_Begin.m_Before + static_cast<std::uint32_t>(x - 1),
                      m_Begin.m_After + static_cast<std::uint32_t>(x - diagonal - 1));
            if (previous == nullptr)
                break;
            diagonal += IsPutIn(*previous, edits, diagonal) ? 1 : -1;
            x = At(*previous, diagonal);
            --edits;
        }
        m_Begin = end;
    }

    static constexpr std::int32_t kOutside = std::numeric_limits<std::int32_t>::min() / 2;

    std::span<const std::uint64_t> m_Before;
    std::span<const std::uint64_t> m_After;
    AlignedPair m_Begin;         // of the round
    std::vector<Front> m_Fronts; // by number of edits
};

// The places whose content the other side has as well: the others are no part of any common subsequence.
std::vector<std::uint32_t> FindShared(std::span<const std::uint64_t> own, std::span<const std::uint64_t> other) {
    const std::unordered_set<std::uint64_t> others(other.begin(), other.end());
    std::vector<std::uint32_t> shared;
    for (std::uint32_t i = 0; i < own.size(); ++i) {
        if (others.contains(own[i]))
            shared.push_back(i);
    }
    return shared;
}

// Pairs that ascend on both sides.
struct Run {
    static constexpr std::size_t kNone = std::numeric_limits<std::size_t>::max();

    bool IsWorseThan(const Run& other) const {
        return std::pair(m_Length, m_Stayed) < std::pair(other.m_Length, other.m_Stayed);
    }

    std::uint32_t m_Length = 0;
    std::uint32_t m_Stayed = 0; // pairs of the same place on both sides
    std::size_t m_Last = kNone; // the pair that ends it
};

// The best run that ends in front of each place: a binary indexed tree of maxima. Of equals, the last that came.
class BestRuns {
public:
    explicit BestRuns(std::uint32_t places) : m_Best(places + std::size_t{1}) {}

    Run FindBefore(std::uint32_t place) const {
        Run best;
        for (std::size_t i = place; i > 0; i &= i - 1) {
            if (!m_Best[i].IsWorseThan(best))
                best = m_Best[i];
        }
        return best;
    }

    void Add(std::uint32_t place, const Run& run) {
        for (std::size_t i = place + std::size_t{1}; i < m_Best.size(); i += i & (~i + 1)) {
            if (!run.IsWorseThan(m_Best[i]))
                m_Best[i] = run;
        }
    }

private:
    std::vector<Run> m_Best;
};

std::vector<std::uint64_t> Pick(std::span<const std::uint64_t> all, std::span<const std::uint32_t> places) {
    std::vector<std::uint64_t> picked;
    for (const std::uint32_t place : places)
        picked.push_back(all[place]);
    return picked;
}

} // namespace

std::vector<AlignedPair> AlignSequences(std::span<const std::uint64_t> before, std::span<const std::uint64_t> after) {
    const auto begin = static_cast<std::uint32_t>(
        std::mismatch(before.begin(), before.end(), after.begin(), after.end()).first - before.begin());
    std::uint32_t beforeEnd = static_cast<std::uint32_t>(before.size());
    std::uint32_t afterEnd = static_cast<std::uint32_t>(after.size());
    while (beforeEnd > begin && afterEnd > begin && before[beforeEnd - 1] == after[afterEnd - 1]) {
        --beforeEnd;
        --afterEnd;
    }

    std::vector<AlignedPair> pairs;
    for (std::uint32_t i = 0; i < begin; ++i)
        pairs.push_back({i, i});
    const auto beforeMiddle = before.subspan(begin, beforeEnd - begin);
    const auto afterMiddle = after.subspan(begin, afterEnd - begin);
    const std::vector<std::uint32_t> beforePlaces = FindShared(beforeMiddle, afterMiddle);
    const std::vector<std::uint32_t> afterPlaces = FindShared(afterMiddle, beforeMiddle);
    EditSearch(Pick(beforeMiddle, beforePlaces), Pick(afterMiddle, afterPlaces))
        .Run([&](std::uint32_t i, std::uint32_t j) {
            pairs.push_back({begin + beforePlaces[i], begin + afterPlaces[j]});
        });
    std::sort(pairs.begin(), pairs.end(),
              [](const AlignedPair& a, const AlignedPair& b) { return a.m_Before < b.m_Before; });
    for (; beforeEnd < before.size(); ++beforeEnd, ++afterEnd)
        pairs.push_back({beforeEnd, afterEnd});
    return pairs;
}

std::vector<bool> FindAscending(std::span<const AlignedPair> pairs) {
    std::uint32_t places = 0;
    for (const AlignedPair& pair : pairs)
        places = std::max(places, pair.m_After + 1);
    BestRuns runs(places);
    std::vector<std::size_t> previous;
    for (const AlignedPair& pair : pairs) {
        Run run = runs.FindBefore(pair.m_After);
        previous.push_back(run.m_Last);
        ++run.m_Length;
        run.m_Stayed += pair.m_Before == pair.m_After ? 1 : 0;
        run.m_Last = previous.size() - 1;
        runs.Add(pair.m_After, run);
    }
    std::vector<bool> isAscending(pairs.size(), false);
    for (std::size_t i = runs.FindBefore(places).m_Last; i != Run::kNone; i = previous[i])
        isAscending[i] = true;
    return isAscending;
}

} // namespace Corvid
