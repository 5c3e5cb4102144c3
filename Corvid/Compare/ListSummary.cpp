#include "Corvid/Compare/ListSummary.h"

#include <algorithm>
#include <cmath>

#include "Corvid/Compare/ElementPairing.h"

namespace Corvid {

namespace {

// Collects the elements that differ, and for each value of an element the largest distance.
class Changes {
public:
    Changes(const ValueComparison& values, const ComparedList& list) : m_Values(values), m_List(list) {}

    void Compare(std::uint32_t before, std::uint32_t after) {
        const ValueSpan a = m_List.m_Before.GetElements()[before];
        const ValueSpan b = m_List.m_After.GetElements()[after];
        if (m_Values.AreSame(a, b))
            return;
        if (m_Summary.m_Count++ == 0)
            m_Summary.m_FirstElement = m_List.m_After.GetShortElementPath(after);
        const ValueIndex size = std::min(a.m_End - a.m_Begin, b.m_End - b.m_Begin);
        if (m_Distances.size() < size)
            m_Distances.resize(size);
        for (ValueIndex i = 0; i < size && m_Values.HaveSameLabel(a.m_Begin + i, b.m_Begin + i); ++i) {
            if (m_Values.AreSameValues(a.m_Begin + i, b.m_Begin + i))
                continue;
            const double distance = m_Values.DistanceOf(a.m_Begin + i, b.m_Begin + i);
            Distance& largest = m_Distances[i];
            if (!(distance <= largest.m_Distance) && !std::isnan(largest.m_Distance))
                largest = {distance, after, b.m_Begin + i};
        }
    }

    const ListSummary& Finish(std::size_t of) {
        m_Summary.m_Of = of;
        for (ValueIndex i = 0; i < m_Distances.size(); ++i) {
            if (m_Distances[i].m_Distance != 0)
                m_Summary.m_Largest.push_back(LargestOf(i, m_Distances[i]));
        }
        return m_Summary;
    }

private:
    struct Distance {
        double m_Distance = 0; // NaN: between a number and something that is none
        std::uint32_t m_Element = 0;
        ValueIndex m_Node = 0;
    };

    ListSummary::Largest LargestOf(ValueIndex offset, const Distance& distance) const {
        const ValueTree& tree = m_Values.GetAfter();
        const ValueNode& node = tree[distance.m_Node];
        return {offset == 0 ? std::string() : std::string(tree.GetLabel(node)), distance.m_Distance,
                node.m_Kind == ValueKind::Int || node.m_Kind == ValueKind::Int64,
                m_List.m_After.GetShortElementPath(distance.m_Element)};
    }

    const ValueComparison& m_Values;
    const ComparedList& m_List;
    std::vector<Distance> m_Distances; // by place of the value within the element
    ListSummary m_Summary;
};

void TellSummary(Change change, const std::string& path, const ListSummary& summary, DifferenceSink& sink) {
    Difference difference;
    difference.m_Change = change;
    difference.m_Field = path;
    difference.m_Summary = &summary;
    sink.Take(difference);
}

void TellOneSided(Change change, const ListSide& side, const std::vector<std::uint32_t>& partners,
                  DifferenceSink& sink) {
    ListSummary summary;
    summary.m_Of = partners.size();
    summary.m_Count = static_cast<std::uint64_t>(std::ranges::count(partners, kNoElement));
    if (summary.m_Count == 0)
        return;
    const auto first = std::ranges::find(partners, kNoElement) - partners.begin();
    summary.m_FirstElement = side.GetShortElementPath(static_cast<std::uint32_t>(first));
    TellSummary(change, side.GetElementsPath(), summary, sink);
}

} // namespace

void SummariseList(const ValueComparison& values, const ComparedList& list, DifferenceSink& sink) {
    const ElementPairing pairing = PairPlaces(values, list.m_Before.GetElements(), list.m_After.GetElements());
    Changes changes(values, list);
    for (std::uint32_t i = 0; i < pairing.m_AfterOf.size(); ++i) {
        if (pairing.m_AfterOf[i] != kNoElement)
            changes.Compare(i, pairing.m_AfterOf[i]);
    }
    const ListSummary& summary = changes.Finish(pairing.m_AfterOf.size());
    if (summary.m_Count > 0)
        TellSummary(Change::Changed, list.m_After.GetElementsPath(), summary, sink);
    TellOneSided(Change::Removed, list.m_Before, pairing.m_AfterOf, sink);
    TellOneSided(Change::Added, list.m_After, pairing.m_BeforeOf, sink);
}

} // namespace Corvid
