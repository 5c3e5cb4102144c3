#include "Corvid/Compare/ComparedList.h"

#include <algorithm>
#include <unordered_map>

namespace Corvid {

ListSide::ListSide(const ValueTree& tree, ValueIndex list, const std::string& prefix, const std::string& indices)
    : m_Tree(tree), m_List(list), m_Prefix(prefix), m_Indices(indices), m_Elements(ElementsOf(tree, list)) {
    if (tree.GetElementLabels(tree[list]).size() < 2)
        return;
    std::unordered_map<std::uint32_t, std::uint32_t> counts; // an element may lack one of the labels
    for (ValueIndex i = list + 1; i < tree[list].m_End; i = tree[i].m_End)
        m_PlaceByLabel.emplace_back(i, counts[tree[i].m_Label]++);
}

std::string ListSide::GetIndices(std::uint32_t place, ValueIndex value) const {
    if (!m_PlaceByLabel.empty())
        place =
            std::ranges::lower_bound(m_PlaceByLabel, value, {}, &std::pair<ValueIndex, std::uint32_t>::first)->second;
    return m_Indices + '[' + std::to_string(place) + ']';
}

std::string ListSide::NameOfElements() const {
    const ValueNode& list = m_Tree[m_List];
    const auto labels = m_Tree.GetElementLabels(list);
    return std::string(labels.size() == 1 && !list.m_IsNamedByCount ? m_Tree.GetLabel(labels[0])
                                                                    : m_Tree.GetLabel(list));
}

std::string ListSide::NameOfValue(ValueIndex value) const {
    const bool isOnlyLabel = m_Tree.GetElementLabels(m_Tree[m_List]).size() == 1;
    return isOnlyLabel ? NameOfElements() : std::string(m_Tree.GetLabel(m_Tree[value]));
}

} // namespace Corvid
