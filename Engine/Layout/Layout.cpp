#include "Engine/Layout/Layout.h"

#include <algorithm>
#include <utility>

namespace Corvid {

LayoutIndex LayoutBuilder::Add(LayoutKind kind, std::string_view label) {
    const auto index = static_cast<LayoutIndex>(m_Nodes.size());
    LayoutNode& node = m_Nodes.emplace_back();
    node.m_Kind = kind;
    node.m_Label = label;
    node.m_End = index + 1;
    node.m_Parent = m_Open.empty() ? kNoLayoutIndex : m_Open.back();
    return index;
}

void LayoutBuilder::End() {
    m_Nodes[m_Open.back()].m_End = static_cast<LayoutIndex>(m_Nodes.size());
    m_Open.pop_back();
}

LayoutIndex LayoutBuilder::FindEarlier(std::string_view label) const {
    for (auto index = static_cast<LayoutIndex>(m_Nodes.size()); index-- > 0;) {
        const LayoutNode& node = m_Nodes[index];
        if (node.m_Label != label || (!IsValueKind(node.m_Kind) && node.m_Kind != LayoutKind::Count))
            continue;
        // In a record or an element that has ended it is out of sight; a condition or a block around it hides nothing.
        bool isVisible = true;
        for (LayoutIndex around = node.m_Parent; around != kNoLayoutIndex && isVisible;
             around = m_Nodes[around].m_Parent) {
            const bool isOpen = std::find(m_Open.begin(), m_Open.end(), around) != m_Open.end();
            const LayoutKind kind = m_Nodes[around].m_Kind;
            isVisible = isOpen || kind == LayoutKind::When || kind == LayoutKind::Use;
        }
        if (isVisible)
            return index;
    }
    return kNoLayoutIndex;
}

Layout LayoutBuilder::Finish(std::string name, bool isAssumed) {
    while (!m_Open.empty())
        End();
    return Layout(std::move(name), std::exchange(m_Nodes, {}), isAssumed);
}

} // namespace Corvid
