// make-mesh <destination> <txt|bin> <columns> <rows> [own|within|equal]: a ball of columns x rows vertices, bumpy
// enough that its values have all their decimals. The last word chooses the bounding radius and positions by what they
// do to the cached vertex lists: the mesh's own radius, all vertices within tolerance of each other, or all sort keys
// equal.

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "Engine/File/NativePath.h"
#include "Engine/Render/Mesh/MeshData.h"

namespace {

using namespace Corvid;

constexpr float kPi = 3.14159265f;

MeshVertex MakeVertex(int column, int row, int columns, int rows, std::string_view shape) {
    const float u = static_cast<float>(column) / static_cast<float>(columns);
    const float v = (static_cast<float>(row) + 0.5f) / static_cast<float>(rows);
    const float longitude = 2.0f * kPi * u;
    const float latitude = kPi * v;
    const Vector3 normal = {std::sin(latitude) * std::cos(longitude), std::cos(latitude),
                            std::sin(latitude) * std::sin(longitude)};
    const float bump = 100.0f * (1.0f + 0.1f * std::sin(37.0f * longitude) * std::sin(23.0f * latitude));
    MeshVertex vertex{};
    vertex.m_Position = shape == "equal" ? Vector3{1.0f, bump, 1.0f} : normal * bump;
    vertex.m_Normal = normal;
    vertex.m_Tangent = {-std::sin(longitude), 0.0f, std::cos(longitude)};
    vertex.m_U0 = vertex.m_U1 = u;
    vertex.m_V0 = vertex.m_V1 = v;
    return vertex;
}

void Fill(MeshData& mesh, int columns, int rows, std::string_view shape) {
    mesh.m_BoundingRadius = shape == "within" ? 1.0e6f : 110.0f;
    mesh.m_MaxBoundingExtents = {110.0f, 110.0f, 110.0f};
    mesh.m_MinBoundingExtents = {-110.0f, -110.0f, -110.0f};
    mesh.m_Materials.SetSize(1);
    mesh.m_Materials[0].m_DiffuseTextureFileName = u"Ball-da.dds";
    mesh.m_Materials[0].m_Diffuse = kWhite;
    mesh.m_Vertices.SetSize(columns * rows);
    for (int i = 0; i < columns * rows; ++i)
        mesh.m_Vertices[i] = MakeVertex(i % columns, i / columns, columns, rows, shape);
    mesh.m_Triangles.SetSize(2 * columns * (rows - 1));
    for (int i = 0; i < mesh.m_Triangles.GetSize(); ++i) {
        const int corner = i / 2;
        const int right = corner % columns == columns - 1 ? corner + 1 - columns : corner + 1;
        MeshTriangle& triangle = mesh.m_Triangles[i];
        triangle.m_iVertex0 = i % 2 == 0 ? corner : right;
        triangle.m_iVertex1 = corner + columns;
        triangle.m_iVertex2 = i % 2 == 0 ? right : right + columns;
    }
}

} // namespace

int main(int argumentCount, char** arguments) {
    if (argumentCount < 5) {
        std::fputs("usage: make-mesh destination txt|bin columns rows [own|within|equal]\n", stderr);
        return 1;
    }
    const std::u16string destination(arguments[1], arguments[1] + std::string_view(arguments[1]).size());
    const ArchiveFormat format = std::string_view(arguments[2]) == "txt" ? ArchiveFormat::Text : ArchiveFormat::Binary;
    MeshData mesh;
    Fill(mesh, std::atoi(arguments[3]), std::atoi(arguments[4]), argumentCount > 5 ? arguments[5] : "own");
    FileArchiveSystem archives;
    return mesh.SaveToFile(archives, format, destination) == SaveResult::Saved ? 0 : 1;
}
