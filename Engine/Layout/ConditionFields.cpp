#include "Engine/Layout/ConditionFields.h"

#include <string_view>
#include <unordered_map>

namespace Corvid {

ConditionFields::ConditionFields(const Layout& layout) : m_Layout(layout), m_Hidden(layout.GetSize(), kNoLayoutIndex) {
    std::unordered_map<std::string_view, std::vector<LayoutIndex>> inSightByLabel;
    std::vector<LayoutIndex> inSight;
    std::vector<LayoutIndex> scopes; // records and elements around the node
    for (LayoutIndex index = 0; index < m_Layout.GetSize(); ++index) {
        const LayoutNode& node = m_Layout[index];
        for (; !scopes.empty() && m_Layout[scopes.back()].m_End <= index; scopes.pop_back()) {
            for (; !inSight.empty() && inSight.back() > scopes.back(); inSight.pop_back())
                inSightByLabel[m_Layout[inSight.back()].m_Label].pop_back();
        }
        if (node.m_Kind == LayoutKind::Record || node.m_Kind == LayoutKind::Count)
            scopes.push_back(index);
        if (!IsValueKind(node.m_Kind))
            continue;
        auto& earlier = inSightByLabel[node.m_Label];
        if (!earlier.empty())
            m_Hidden[index] = earlier.back();
        earlier.push_back(index);
        inSight.push_back(index);
    }
}

std::vector<LayoutIndex> ConditionFields::CandidatesOf(LayoutIndex when, LayoutIndex field) const {
    std::vector<LayoutIndex> candidates;
    const auto isAround = [this, when](LayoutIndex outer) {
        return outer == kNoLayoutIndex || (outer <= when && when < m_Layout[outer].m_End);
    };
    for (LayoutIndex index = field; index != kNoLayoutIndex && candidates.size() < kMostCandidates;
         index = m_Hidden[index]) {
        candidates.push_back(index);
        bool isAlwaysThere = true;
        for (LayoutIndex outer = m_Layout[index].m_Parent; !isAround(outer); outer = m_Layout[outer].m_Parent)
            isAlwaysThere &= m_Layout[outer].m_Kind != LayoutKind::When;
        if (isAlwaysThere)
            break;
    }
    return candidates;
}

} // namespace Corvid
