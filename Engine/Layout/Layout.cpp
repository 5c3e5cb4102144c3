#include "Engine/Layout/Layout.h"

#include <utility>

namespace Corvid {

std::size_t LeastBytesOf(LayoutKind kind) {
    switch (kind) {
    case LayoutKind::Bool:
        return 1;
    case LayoutKind::Int:
    case LayoutKind::Float:
    case LayoutKind::Count:
    case LayoutKind::String:
    case LayoutKind::Word:
        return 4;
    case LayoutKind::Int64:
    case LayoutKind::Double:
    case LayoutKind::Pair:
        return 8;
    case LayoutKind::Vector3:
        return 12;
    case LayoutKind::Vector4:
    case LayoutKind::Rect:
    case LayoutKind::Color:
        return 16;
    case LayoutKind::Matrix33:
        return 36;
    case LayoutKind::Matrix44:
        return 64;
    case LayoutKind::Record:
    case LayoutKind::Use:
    case LayoutKind::When:
        break;
    }
    return 0;
}

LayoutIndex LayoutBuilder::Add(LayoutKind kind, std::string_view label) {
    const LayoutIndex index = GetSize();
    LayoutNode& node = m_Nodes.emplace_back();
    node.m_Kind = kind;
    node.m_Label = label;
    node.m_End = index + 1;
    node.m_Parent = m_Open.empty() ? kNoLayoutIndex : m_Open.back();
    Show(index);
    return index;
}

void LayoutBuilder::AddAll(std::span<const LayoutNode> nodes, LayoutIndex first) {
    const LayoutIndex start = GetSize();
    const auto move = [first, start, size = nodes.size()](LayoutIndex& index) {
        if (index != kNoLayoutIndex && index >= first && index - first <= size)
            index = index - first + start;
    };
    std::vector<bool> isInSight;
    for (const LayoutNode& added : nodes) {
        LayoutNode& node = m_Nodes.emplace_back(added);
        const LayoutIndex parent = node.m_Parent;
        const bool isOutermost = parent == kNoLayoutIndex || parent < first || parent - first >= nodes.size();
        if (isOutermost)
            node.m_Parent = m_Open.empty() ? kNoLayoutIndex : m_Open.back();
        else
            move(node.m_Parent);
        move(node.m_End);
        move(node.m_Condition.m_Field);
        for (LayoutCondition& condition : node.m_Doubt.m_Alternatives)
            move(condition.m_Field);
        // In a record or an element that has ended it is out of sight; a condition or a block around it hides nothing.
        const auto hidesNothing = [](LayoutKind kind) { return kind == LayoutKind::When || kind == LayoutKind::Use; };
        isInSight.push_back(isOutermost || (isInSight[parent - first] && hidesNothing(m_Nodes[node.m_Parent].m_Kind)));
        if (isInSight.back())
            Show(GetSize() - 1);
    }
}

void LayoutBuilder::End() {
    const LayoutIndex index = m_Open.back();
    LayoutNode& node = m_Nodes[index];
    node.m_End = GetSize();
    m_Open.pop_back();
    if (node.m_Kind == LayoutKind::Record || node.m_Kind == LayoutKind::Count)
        HideBehind(index);
}

void LayoutBuilder::Show(LayoutIndex index) {
    const LayoutNode& node = m_Nodes[index];
    if (!IsValueKind(node.m_Kind) && node.m_Kind != LayoutKind::Count)
        return;
    m_InSight.push_back(index);
    m_InSightByLabel[node.m_Label].push_back(index);
}

void LayoutBuilder::HideBehind(LayoutIndex index) {
    for (; !m_InSight.empty() && m_InSight.back() > index; m_InSight.pop_back())
        m_InSightByLabel[m_Nodes[m_InSight.back()].m_Label].pop_back();
}

LayoutIndex LayoutBuilder::FindEarlier(std::string_view label) const {
    const auto found = m_InSightByLabel.find(std::string(label));
    return found != m_InSightByLabel.end() && !found->second.empty() ? found->second.back() : kNoLayoutIndex;
}

Layout LayoutBuilder::Finish(std::string name, bool isAssumed) {
    while (!m_Open.empty())
        End();
    m_InSight.clear();
    m_InSightByLabel.clear();
    return Layout(std::move(name), std::exchange(m_Nodes, {}), isAssumed);
}

} // namespace Corvid
