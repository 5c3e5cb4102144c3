#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "Corvid/Values/ValueTree.h"

namespace Corvid {

// Walks over a tree and tells the path of each node as it is printed: labels joined by dots, an element of a list with
// its index, as in "MeshData.Material[2].Glossiness"; one index per list where lists stand directly in each other.
class ValuePaths {
public:
    explicit ValuePaths(const ValueTree& tree) : m_Tree(tree) { Arrive(); }

    bool IsAtEnd() const { return m_Index == m_Tree.GetSize(); }
    ValueIndex GetIndex() const { return m_Index; }
    const ValueNode& GetNode() const { return m_Tree[m_Index]; }
    std::string GetPath() const { return m_Path; }

    void Next();       // to what is nested in the node first
    void SkipNested(); // to the next node that is not nested in this one

private:
    struct Level {
        ValueIndex m_Node = 0;
        std::size_t m_PrefixLength = 0;       // of the path of what is nested in the node
        std::string m_OuterIndices;           // of a list that belongs to an element of another list: "[2]"
        std::vector<std::uint32_t> m_Indices; // of a list: the next element's, by element label
    };

    void Arrive();
    void AddName(std::string_view name);

    const ValueTree& m_Tree;
    ValueIndex m_Index = 0;
    std::string m_Path;           // of the node
    std::string m_Indices;        // at its end
    std::size_t m_NameLength = 0; // in front of them
    std::vector<Level> m_Levels;
};

} // namespace Corvid
