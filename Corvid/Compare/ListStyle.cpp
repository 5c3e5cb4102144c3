#include "Corvid/Compare/ListStyle.h"

#include <algorithm>

#include "Engine/Archive/LabelText.h"
#include "Engine/Render/Mesh/MeshData.h"

namespace Corvid {

ListStyle ListStyleOf(std::string_view path) {
    constexpr std::string_view kMesh = "MeshData.";
    if (!path.starts_with(kMesh))
        return ListStyle::Paired;
    path.remove_prefix(kMesh.size());
    if (path == "NumVertices" || path == "NumTriangles")
        return ListStyle::Summarised;
    const bool isCached = std::ranges::any_of(
        kCachedIndexCountLabels, [path](Label label) { return std::string_view(LabelText(label)) == path; });
    return isCached ? ListStyle::Derived : ListStyle::Paired;
}

} // namespace Corvid
