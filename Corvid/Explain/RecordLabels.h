#pragma once

#include <string_view>
#include <unordered_map>
#include <vector>

#include "Engine/Layout/Layout.h"

namespace Corvid {

// The labels that one record, or the file itself, asks for, in order: of its own fields and of the elements of its
// lists, whatever the conditions say.
class RecordLabels {
public:
    // The nodes from `first` to `end` of the layout.
    RecordLabels(const Layout& layout, LayoutIndex first, LayoutIndex end);

    bool AsksFor(std::string_view label) const { return m_Places.contains(label); }

    // Whether the record asks for the label behind the node.
    bool AsksForBehind(std::string_view label, LayoutIndex node) const;

    // The node of an element whose list is the last one to have ended at `node`, under that label.
    const std::vector<std::string_view>& GetAll() const { return m_All; }
    std::string_view GetFirst() const { return m_All.empty() ? std::string_view() : m_All.front(); }
    const std::vector<LayoutIndex>* FindNodes(std::string_view label) const;

    // The elements of the list are told apart by the label of the count.
    bool IsNamedByCount(LayoutIndex list) const;

private:
    void Add(const Layout& layout, LayoutIndex first, LayoutIndex end, LayoutIndex list);

    std::unordered_map<std::string_view, std::vector<LayoutIndex>> m_Places;
    std::unordered_map<std::string_view, std::vector<LayoutIndex>> m_ListsByElement;
    std::vector<std::string_view> m_All;
};

// The labels of one element: one for each value, in order, those under conditions included.
std::vector<std::string_view> ElementLabels(const Layout& layout, LayoutIndex list);

} // namespace Corvid
