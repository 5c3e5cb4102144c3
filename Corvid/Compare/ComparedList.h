#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "Corvid/Compare/ListElements.h"
#include "Corvid/Compare/ValueComparison.h"

namespace Corvid {

// A list on one side of a comparison: its elements and their paths. The list's own path begins with `prefix`;
// `indices` are those of the element that the list is, if it is one: "[3]".
class ListSide {
public:
    ListSide(const ValueTree& tree, ValueIndex list, const std::string& prefix, const std::string& indices);

    const std::vector<ValueSpan>& GetElements() const { return m_Elements; }

    std::string GetListPath() const { return m_Prefix + std::string(m_Tree.GetLabel(m_Tree[m_List])) + m_Indices; }
    // What the elements have in common, without an index.
    std::string GetElementsPath() const { return m_Prefix + NameOfElements() + m_Indices; }
    std::string GetElementPath(std::uint32_t place) const {
        return GetValuePath(place, MainValueOf(m_Tree, m_Elements[place]));
    }
    // The same without the list's prefix, for use beside its path.
    std::string GetShortElementPath(std::uint32_t place) const { return GetElementPath(place).substr(m_Prefix.size()); }
    // Of a value of the element.
    std::string GetValuePath(std::uint32_t place, ValueIndex value) const {
        return m_Prefix + NameOfValue(value) + GetIndices(place, value);
    }

    const std::string& GetPrefix() const { return m_Prefix; }
    std::string GetIndices(std::uint32_t place, ValueIndex value) const;

private:
    std::string NameOfElements() const;
    std::string NameOfValue(ValueIndex value) const;

    const ValueTree& m_Tree;
    ValueIndex m_List;
    std::string m_Prefix;
    std::string m_Indices;
    std::vector<ValueSpan> m_Elements;
    std::vector<std::pair<ValueIndex, std::uint32_t>> m_PlaceByLabel; // where elements have several labels
};

// The two sides of a list.
struct ComparedList {
    ListSide m_Before;
    ListSide m_After;
};

} // namespace Corvid
