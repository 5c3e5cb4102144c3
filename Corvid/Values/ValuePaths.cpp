#include "Corvid/Values/ValuePaths.h"

#include <algorithm>

namespace Corvid {

void ValuePaths::Next() {
    const ValueNode& node = m_Tree[m_Index];
    if (node.m_Kind == ValueKind::Record || node.m_Kind == ValueKind::List) {
        Level level{m_Index, m_Path.size(), {}, {}};
        if (node.m_Kind == ValueKind::List) { // its elements stand in the path in place of the count
            level.m_PrefixLength = m_Path.size() - m_Indices.size() - m_NameLength;
            level.m_OuterIndices = m_Indices;
            level.m_Indices.resize(m_Tree.GetElementLabels(node).size());
        } else {
            m_Path.push_back('.');
            ++level.m_PrefixLength;
        }
        m_Levels.push_back(std::move(level));
    }
    ++m_Index;
    Arrive();
}

void ValuePaths::SkipNested() {
    m_Index = m_Tree[m_Index].m_End;
    Arrive();
}

void ValuePaths::AddName(std::string_view name) {
    m_Path += name;
    m_NameLength = name.size();
}

void ValuePaths::Arrive() {
    while (!m_Levels.empty() && m_Index >= m_Tree[m_Levels.back().m_Node].m_End)
        m_Levels.pop_back();
    if (IsAtEnd())
        return;
    m_Path.resize(m_Levels.empty() ? 0 : m_Levels.back().m_PrefixLength);
    m_Indices.clear();
    const ValueNode& node = m_Tree[m_Index];
    if (m_Levels.empty() || m_Tree[m_Levels.back().m_Node].m_Kind != ValueKind::List) {
        AddName(m_Tree.GetLabel(node));
        return;
    }
    Level& level = m_Levels.back();
    const ValueNode& list = m_Tree[level.m_Node];
    const auto labels = m_Tree.GetElementLabels(list);
    const auto place = std::find(labels.begin(), labels.end(), node.m_Label) - labels.begin();
    if (place == static_cast<std::ptrdiff_t>(labels.size())) { // no element's label: as it stands
        AddName(m_Tree.GetLabel(node));
        return;
    }
    const bool isOnlyLabel = labels.size() == 1;
    AddName(list.m_IsNamedByCount && isOnlyLabel ? m_Tree.GetLabel(list) : m_Tree.GetLabel(node));
    m_Indices = level.m_OuterIndices + '[' + std::to_string(level.m_Indices[static_cast<std::size_t>(place)]++) + ']';
    m_Path += m_Indices;
}

} // namespace Corvid
