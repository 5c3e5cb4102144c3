#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "Corvid/Content/References.h"
#include "Corvid/Load/LoadedFile.h"
#include "Engine/Math/Vector.h"

namespace Corvid {

// The space that a mesh takes: what the file states, and what its vertices come to.
struct MeshBounds {
    float m_Radius = 0.0f; // about the origin
    Vector3 m_Min{};
    Vector3 m_Max{};

    // Of the vertices; not there when there are none. Coordinates that are no numbers do not count.
    struct Actual {
        float m_Radius = 0.0f;
        Vector3 m_Min{};
        Vector3 m_Max{};
    };
    std::optional<Actual> m_Actual;
};

// What is known of one file, as far as its kind has it.
struct FileInfo {
    std::optional<Kind> m_Kind;
    std::optional<ArchiveFormat> m_Encoding;
    std::uint64_t m_Bytes = 0;
    std::vector<std::pair<std::string, std::int32_t>> m_Counts; // by the count's label, outside of elements
    std::vector<Reference> m_References;
    std::string m_EntityType;
    std::string m_Layout;

    struct MeshFacts {
        MeshBounds m_Bounds;
        std::vector<std::int32_t> m_UnusedMaterials; // that no triangle names
        std::uint64_t m_RepeatedVertices = 0;        // that equal an earlier one in everything
    };
    std::optional<MeshFacts> m_Mesh;
};

FileInfo DescribeFile(const LoadedFile& file);

} // namespace Corvid
