#pragma once

#include <string>
#include <vector>

#include "Corvid/Gltf/GltfDocument.h"
#include "Corvid/Gltf/GltfTransform.h"

namespace Corvid {

// A node of the shown scene.
struct GltfPlacedNode {
    const GltfNode* m_Node;
    GltfTransform m_World;
    bool m_HoldsObject; // a mesh, a camera and so on, here or below
};

// The nodes of the shown scene, each parent before its children; all nodes where the file has no scene. False, with a
// clause that says what is wrong, when a node does not exist or is reached twice.
bool PlaceGltfNodes(const GltfDocument& document, std::vector<GltfPlacedNode>& nodes, std::string& error);

} // namespace Corvid
