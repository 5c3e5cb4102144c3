#include "Corvid/Compare/ElementPairing.h"

#include <algorithm>
#include <string_view>
#include <unordered_map>

#include "Corvid/Compare/SequenceAlignment.h"

namespace Corvid {

namespace {

// In a larger gap than this, pairs of elements, what is alike is found only at the same place.
constexpr std::size_t kLargestGap = 1024;

// A renamed element is still itself when this much of it stayed; one without a name when this much did.
constexpr double kLikeWithNames = 0.75;
constexpr double kLikeWithoutNames = 0.5;

class Pairing {
public:
    Pairing(const ValueComparison& values, const std::vector<ValueSpan>& before, const std::vector<ValueSpan>& after)
        : m_Values(values), m_Before(before), m_After(after) {
        m_Result.m_AfterOf.assign(before.size(), kNoElement);
        m_Result.m_BeforeOf.assign(after.size(), kNoElement);
        m_Result.m_IsMoved.assign(after.size(), false);
    }

    void PairInPlace() {
        for (std::uint32_t i = 0; i < std::min(m_Before.size(), m_After.size()); ++i)
            Pair(i, i);
    }

    void PairAlignedContent() {
        for (const ValueSpan element : m_Before)
            m_BeforeHashes.push_back(m_Values.HashBefore(element));
        for (const ValueSpan element : m_After)
            m_AfterHashes.push_back(m_Values.HashAfter(element));
        for (const AlignedPair pair : AlignSequences(m_BeforeHashes, m_AfterHashes))
            Pair(pair.m_Before, pair.m_After);
    }

    void PairMovedContent() {
        PairByKey<std::uint64_t>([this](std::uint32_t i) { return m_BeforeHashes[i]; },
                                 [this](std::uint32_t i) { return m_AfterHashes[i]; });
    }

    void PairNames() {
        PairByKey<std::u16string_view>([this](std::uint32_t i) { return NameOf(m_Values.GetBefore(), m_Before[i]); },
                                       [this](std::uint32_t i) { return NameOf(m_Values.GetAfter(), m_After[i]); });
    }

    // Calls `pair(before, beforeEnd, after, afterEnd)` for what has no partner between pairs in order.
    template <class PairGap> void PairGaps(PairGap pairGap) {
        std::uint32_t before = 0;
        std::uint32_t after = 0;
        for (const AlignedPair pair : GetPairsInOrder()) {
            pairGap(FreeBefore(before, pair.m_Before), FreeAfter(after, pair.m_After));
            before = pair.m_Before + 1;
            after = pair.m_After + 1;
        }
        pairGap(FreeBefore(before, static_cast<std::uint32_t>(m_Before.size())),
                FreeAfter(after, static_cast<std::uint32_t>(m_After.size())));
    }

    void PairGapInPlace(const std::vector<std::uint32_t>& before, const std::vector<std::uint32_t>& after) {
        for (std::size_t i = 0; i < std::min(before.size(), after.size()); ++i)
            Pair(before[i], after[i]);
    }

    // The pairs, in order, that have the most in common all together.
    void PairGapByLikeness(const std::vector<std::uint32_t>& before, const std::vector<std::uint32_t>& after) {
        if (before.size() * after.size() > kLargestGap) {
            for (std::size_t i = 0; i < std::min(before.size(), after.size()); ++i) {
                if (LikenessOf(before[i], after[i]) > 0)
                    Pair(before[i], after[i]);
            }
            return;
        }
        const std::size_t columns = after.size() + 1;
        std::vector<double> likeness((before.size() + 1) * columns);
        std::vector<double> best((before.size() + 1) * columns); // of what lies behind both places
        for (std::size_t i = before.size(); i-- > 0;) {
            for (std::size_t j = after.size(); j-- > 0;) {
                const std::size_t place = i * columns + j;
                likeness[place] = LikenessOf(before[i], after[j]);
                best[place] =
                    std::max({best[place + columns], best[place + 1], likeness[place] + best[place + columns + 1]});
            }
        }
        for (std::size_t i = 0, j = 0; i < before.size() && j < after.size();) {
            const std::size_t place = i * columns + j;
            if (likeness[place] > 0 && best[place] == likeness[place] + best[place + columns + 1])
                Pair(before[i++], after[j++]);
            else if (best[place] == best[place + columns])
                ++i;
            else
                ++j;
        }
    }

    void NoteMoves() {
        const std::vector<AlignedPair> pairs = GetPairs();
        const std::vector<bool> isInOrder = FindAscending(pairs);
        for (std::size_t i = 0; i < pairs.size(); ++i)
            m_Result.m_IsMoved[pairs[i].m_After] = !isInOrder[i];
    }

    ElementPairing Take() { return std::move(m_Result); }

private:
    void Pair(std::uint32_t before, std::uint32_t after) {
        m_Result.m_AfterOf[before] = after;
        m_Result.m_BeforeOf[after] = before;
    }

    // Pairs what has the same key and no partner yet, the first with the first.
    template <class Key, class BeforeKey, class AfterKey> void PairByKey(BeforeKey beforeKey, AfterKey afterKey) {
        struct Places {
            std::vector<std::uint32_t> m_Places;
            std::size_t m_Next = 0;
        };
        std::unordered_map<Key, Places> free;
        for (std::uint32_t i = 0; i < m_Before.size(); ++i) {
            if (m_Result.m_AfterOf[i] == kNoElement && beforeKey(i) != Key())
                free[beforeKey(i)].m_Places.push_back(i);
        }
        for (std::uint32_t i = 0; i < m_After.size(); ++i) {
            if (m_Result.m_BeforeOf[i] != kNoElement)
                continue;
            const auto found = free.find(afterKey(i));
            if (found != free.end() && found->second.m_Next < found->second.m_Places.size())
                Pair(found->second.m_Places[found->second.m_Next++], i);
        }
    }

    std::vector<AlignedPair> GetPairs() const {
        std::vector<AlignedPair> pairs;
        for (std::uint32_t i = 0; i < m_Before.size(); ++i) {
            if (m_Result.m_AfterOf[i] != kNoElement)
                pairs.push_back({i, m_Result.m_AfterOf[i]});
        }
        return pairs;
    }

    std::vector<AlignedPair> GetPairsInOrder() const {
        const std::vector<AlignedPair> pairs = GetPairs();
        const std::vector<bool> isInOrder = FindAscending(pairs);
        std::vector<AlignedPair> inOrder;
        for (std::size_t i = 0; i < pairs.size(); ++i) {
            if (isInOrder[i])
                inOrder.push_back(pairs[i]);
        }
        return inOrder;
    }

    std::vector<std::uint32_t> FreeBefore(std::uint32_t begin, std::uint32_t end) const {
        return FreeOf(m_Result.m_AfterOf, begin, end);
    }
    std::vector<std::uint32_t> FreeAfter(std::uint32_t begin, std::uint32_t end) const {
        return FreeOf(m_Result.m_BeforeOf, begin, end);
    }
    static std::vector<std::uint32_t> FreeOf(const std::vector<std::uint32_t>& partners, std::uint32_t begin,
                                             std::uint32_t end) {
        std::vector<std::uint32_t> places;
        for (; begin < end; ++begin) {
            if (partners[begin] == kNoElement)
                places.push_back(begin);
        }
        return places;
    }

    // 0 when they are not one element that changed.
    double LikenessOf(std::uint32_t before, std::uint32_t after) const {
        const ValueSpan a = m_Before[before];
        const ValueSpan b = m_After[after];
        if (a.m_End - a.m_Begin == 1 && b.m_End - b.m_Begin == 1) // a single value is its place
            return kLikeWithoutNames;
        const bool haveNames = !NameOf(m_Values.GetBefore(), a).empty() && !NameOf(m_Values.GetAfter(), b).empty();
        const double likeness = m_Values.LikenessOf(a, b);
        return likeness >= (haveNames ? kLikeWithNames : kLikeWithoutNames) ? likeness : 0;
    }

    const ValueComparison& m_Values;
    const std::vector<ValueSpan>& m_Before;
    const std::vector<ValueSpan>& m_After;
    std::vector<std::uint64_t> m_BeforeHashes;
    std::vector<std::uint64_t> m_AfterHashes;
    ElementPairing m_Result;
};

bool AreSingleValues(const ValueTree& tree, const std::vector<ValueSpan>& elements) {
    return std::ranges::all_of(elements, [&](ValueSpan element) {
        return element.m_End - element.m_Begin == 1 && tree[element.m_Begin].m_Kind != ValueKind::Record;
    });
}

} // namespace

ElementPairing PairElements(const ValueComparison& values, const std::vector<ValueSpan>& before,
                            const std::vector<ValueSpan>& after) {
    if (before.size() == after.size() && AreSingleValues(values.GetBefore(), before) &&
        AreSingleValues(values.GetAfter(), after))
        return PairPlaces(values, before, after); // slots, most of them
    Pairing pairing(values, before, after);
    pairing.PairAlignedContent();
    pairing.PairMovedContent();
    pairing.PairNames();
    pairing.PairGaps(
        [&](const auto& gapBefore, const auto& gapAfter) { pairing.PairGapByLikeness(gapBefore, gapAfter); });
    pairing.NoteMoves();
    return pairing.Take();
}

ElementPairing PairPlaces(const ValueComparison& values, const std::vector<ValueSpan>& before,
                          const std::vector<ValueSpan>& after) {
    Pairing pairing(values, before, after);
    if (before.size() == after.size()) {
        pairing.PairInPlace();
    } else {
        pairing.PairAlignedContent();
        pairing.PairGaps(
            [&](const auto& gapBefore, const auto& gapAfter) { pairing.PairGapInPlace(gapBefore, gapAfter); });
    }
    return pairing.Take();
}

} // namespace Corvid
