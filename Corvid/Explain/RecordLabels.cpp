#include "Corvid/Explain/RecordLabels.h"

#include <algorithm>

namespace Corvid {

RecordLabels::RecordLabels(const Layout& layout, LayoutIndex first, LayoutIndex end) {
    Add(layout, first, end, kNoLayoutIndex);
}

void RecordLabels::Add(const Layout& layout, LayoutIndex first, LayoutIndex end, LayoutIndex list) {
    for (LayoutIndex index = first; index < end; index = layout[index].m_End) {
        const LayoutNode& node = layout[index];
        if (node.m_Kind == LayoutKind::Use || node.m_Kind == LayoutKind::When) {
            Add(layout, index + 1, node.m_End, list);
            continue;
        }
        std::vector<LayoutIndex>& nodes = m_Places[node.m_Label];
        if (nodes.empty())
            m_All.push_back(node.m_Label);
        nodes.push_back(index);
        if (list != kNoLayoutIndex) {
            std::vector<LayoutIndex>& lists = m_ListsByElement[node.m_Label];
            if (lists.empty() || lists.back() != list)
                lists.push_back(list);
        }
        if (node.m_Kind == LayoutKind::Count)
            Add(layout, index + 1, node.m_End, index);
    }
}

bool RecordLabels::AsksForBehind(std::string_view label, LayoutIndex node) const {
    const std::vector<LayoutIndex>* const nodes = FindNodes(label);
    return nodes != nullptr && nodes->back() >= node;
}

const std::vector<LayoutIndex>* RecordLabels::FindNodes(std::string_view label) const {
    const auto found = m_Places.find(label);
    return found != m_Places.end() ? &found->second : nullptr;
}

bool RecordLabels::IsNamedByCount(LayoutIndex list) const {
    return std::any_of(m_ListsByElement.begin(), m_ListsByElement.end(), [&](const auto& entry) {
        return entry.second.size() > 1 &&
               std::find(entry.second.begin(), entry.second.end(), list) != entry.second.end();
    });
}

namespace {

void AddElementLabels(const Layout& layout, LayoutIndex first, LayoutIndex end, std::vector<std::string_view>& labels) {
    for (LayoutIndex index = first; index < end; index = layout[index].m_End) {
        const LayoutNode& node = layout[index];
        if (node.m_Kind == LayoutKind::Use || node.m_Kind == LayoutKind::When)
            AddElementLabels(layout, index + 1, node.m_End, labels);
        else if (std::find(labels.begin(), labels.end(), node.m_Label) == labels.end())
            labels.push_back(node.m_Label);
    }
}

} // namespace

std::vector<std::string_view> ElementLabels(const Layout& layout, LayoutIndex list) {
    std::vector<std::string_view> labels;
    AddElementLabels(layout, list + 1, layout[list].m_End, labels);
    return labels;
}

} // namespace Corvid
