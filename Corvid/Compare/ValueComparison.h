#pragma once

#include <cstdint>
#include <vector>

#include "Corvid/Compare/CompareOptions.h"
#include "Corvid/Values/ValueTree.h"

namespace Corvid {

// Nodes that follow each other: a value with what is nested in it, or several.
struct ValueSpan {
    ValueIndex m_Begin = 0;
    ValueIndex m_End = 0;
};

// Holds values of two trees against each other.
class ValueComparison {
public:
    ValueComparison(const ValueTree& before, const ValueTree& after, const CompareOptions& options);

    const ValueTree& GetBefore() const { return m_Before; }
    const ValueTree& GetAfter() const { return m_After; }
    const CompareOptions& GetOptions() const { return m_Options; }

    // A number that stands for the label on both sides.
    std::uint32_t GetBeforeLabel(ValueIndex before) const { return m_Before[before].m_Label; }
    std::uint32_t GetAfterLabel(ValueIndex after) const { return m_AfterLabels[m_After[after].m_Label]; }
    bool HaveSameLabel(ValueIndex before, ValueIndex after) const {
        return GetBeforeLabel(before) == GetAfterLabel(after);
    }

    // Of two values under whatever labels, without what is nested in them.
    bool AreSameValues(ValueIndex before, ValueIndex after) const;

    // Values, labels and nesting.
    bool AreSame(ValueSpan before, ValueSpan after) const;

    // Of two single values of one kind that are numbers or made of them: the distance of the components that are
    // furthest apart. 0 for any other two.
    double DistanceOf(ValueIndex before, ValueIndex after) const;

    // The same on both sides for what AreSame() holds for, and hardly ever for anything else.
    std::uint64_t HashBefore(ValueSpan span) const;
    std::uint64_t HashAfter(ValueSpan span) const;

    // How much of two records is the same: 0 nothing, 1 everything.
    double LikenessOf(ValueSpan before, ValueSpan after) const;

private:
    bool AreFloatsLoose() const { return m_Options.m_Ulp > 0 || m_Options.m_Tolerance > 0; }
    template <class LabelOf> std::uint64_t Hash(const ValueTree& tree, ValueSpan span, LabelOf labelOf) const;
    std::uint64_t HashValue(const ValueTree& tree, const ValueNode& node) const;

    const ValueTree& m_Before;
    const ValueTree& m_After;
    CompareOptions m_Options;
    std::vector<std::uint32_t> m_AfterLabels; // the numbers of the same labels in `before`
};

} // namespace Corvid
