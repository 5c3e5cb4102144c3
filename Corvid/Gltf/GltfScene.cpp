#include "Corvid/Gltf/GltfScene.h"

namespace Corvid {

namespace {

std::vector<int> FindRoots(const GltfDocument& document) {
    std::vector<bool> isChild(document.m_Nodes.size(), false);
    for (const GltfNode& node : document.m_Nodes) {
        for (const int child : node.m_Children) {
            if (child >= 0 && static_cast<std::size_t>(child) < isChild.size())
                isChild[static_cast<std::size_t>(child)] = true;
        }
    }
    std::vector<int> roots;
    for (std::size_t i = 0; i < isChild.size(); ++i) {
        if (!isChild[i])
            roots.push_back(static_cast<int>(i));
    }
    return roots;
}

} // namespace

bool PlaceGltfNodes(const GltfDocument& document, std::vector<GltfPlacedNode>& nodes, std::string& error) {
    constexpr std::size_t kNoParent = ~std::size_t{0};
    struct Visit {
        int m_Node;
        std::size_t m_Parent; // in `nodes`
    };
    std::vector<Visit> open; // last first
    const std::vector<int> roots = document.m_Roots.empty() ? FindRoots(document) : document.m_Roots;
    for (auto root = roots.rbegin(); root != roots.rend(); ++root)
        open.push_back({*root, kNoParent});
    std::vector<std::size_t> parents;
    std::vector<bool> wasReached(document.m_Nodes.size(), false);
    while (!open.empty()) {
        const auto [index, parent] = open.back();
        open.pop_back();
        if (index < 0 || static_cast<std::size_t>(index) >= document.m_Nodes.size()) {
            error = "there is no node " + std::to_string(index);
            return false;
        }
        if (wasReached[static_cast<std::size_t>(index)]) {
            error = "node " + std::to_string(index) + " is reached in two ways";
            return false;
        }
        wasReached[static_cast<std::size_t>(index)] = true;
        const GltfNode& node = document.m_Nodes[static_cast<std::size_t>(index)];
        const GltfTransform local(node);
        nodes.push_back({&node, parent == kNoParent ? local : nodes[parent].m_World * local,
                         node.m_Mesh != kGltfNone || node.m_HasObject});
        parents.push_back(parent);
        for (auto child = node.m_Children.rbegin(); child != node.m_Children.rend(); ++child)
            open.push_back({*child, nodes.size() - 1});
    }
    for (std::size_t i = nodes.size(); i-- > 0;) {
        if (parents[i] != kNoParent && nodes[i].m_HoldsObject)
            nodes[parents[i]].m_HoldsObject = true;
    }
    return true;
}

} // namespace Corvid
