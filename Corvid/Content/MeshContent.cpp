#include "Corvid/Content/MeshContent.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "Corvid/Content/FiniteValues.h"
#include "Corvid/Values/ValueTreeWriter.h"
#include "Engine/Archive/LabelText.h"

namespace Corvid {

namespace {

constexpr float kBoundsTolerance = 1e-4f; // of the radius: text rounds what binary does not

std::string Element(std::string_view list, int index, std::string_view field = {}) {
    std::string path = "MeshData." + std::string(list) + "[" + std::to_string(index) + "]";
    return field.empty() ? path : path + "." + std::string(field);
}

class MeshChecks {
public:
    MeshChecks(const MeshData& mesh, DiagnosticLog& log) : m_Mesh(mesh), m_Log(log) {}

    void Run() {
        CheckHead();
        CheckElementValues(m_Mesh.m_Materials, "Material");
        CheckElementValues(m_Mesh.m_Points, "Point");
        for (int i = 0; i < m_Mesh.m_Vertices.GetSize(); ++i)
            CheckVertex(i);
        for (int i = 0; i < m_Mesh.m_Triangles.GetSize(); ++i)
            CheckTriangle(i);
        CheckLists();
    }

private:
    void CheckHead();
    template <class List> void CheckElementValues(const List& list, std::string_view label);
    void CheckVertex(int index);
    void CheckBounds(int index);
    void CheckTriangle(int index);
    void CheckLists();
    void CheckIndex(int value, int count, std::string_view what, const std::string& field);
    void CheckFinite(std::span<const float> values, const std::string& field);

    const MeshData& m_Mesh;
    DiagnosticLog& m_Log;
};

std::span<const float> FloatsOf(const Vector3& vector) {
    return {&vector.x, 3};
}

bool AreFinite(std::span<const float> values) {
    return std::all_of(values.begin(), values.end(), [](float value) { return std::isfinite(value); });
}

void MeshChecks::CheckFinite(std::span<const float> values, const std::string& field) {
    for (const float value : values) {
        if (!std::isfinite(value)) {
            AddNotFinite(m_Log, field, static_cast<double>(value));
            return;
        }
    }
}

void MeshChecks::CheckHead() {
    CheckFinite({&m_Mesh.m_BoundingRadius, 1}, "MeshData.BoundingRadius");
    CheckFinite(FloatsOf(m_Mesh.m_MaxBoundingExtents), "MeshData.MaxBoundingExtents");
    CheckFinite(FloatsOf(m_Mesh.m_MinBoundingExtents), "MeshData.MinBoundingExtents");
}

// Of lists that are short: each element's values are looked at as they stand in a file.
template <class List> void MeshChecks::CheckElementValues(const List& list, std::string_view label) {
    for (int i = 0; i < list.GetSize(); ++i) {
        DiagnosticLog found;
        CheckFiniteValues(ValuesOf(list[i]), found);
        for (Diagnostic diagnostic : found.GetAll()) {
            diagnostic.m_Field = Element(label, i, diagnostic.m_Field);
            m_Log.Add(std::move(diagnostic));
        }
    }
}

void MeshChecks::CheckVertex(int index) {
    const MeshVertex& vertex = m_Mesh.m_Vertices[index];
    // All thirteen at once: hardly any vertex needs a closer look.
    static_assert(sizeof(MeshVertex) == 13 * sizeof(float));
    if (!AreFinite({&vertex.m_Position.x, 13})) {
        CheckFinite(FloatsOf(vertex.m_Position), Element("Vertex", index, "Position"));
        CheckFinite(FloatsOf(vertex.m_Normal), Element("Vertex", index, "Normal"));
        CheckFinite(FloatsOf(vertex.m_Tangent), Element("Vertex", index, "Tangent"));
        CheckFinite({&vertex.m_U0, 1}, Element("Vertex", index, "U0"));
        CheckFinite({&vertex.m_V0, 1}, Element("Vertex", index, "V0"));
        CheckFinite({&vertex.m_U1, 1}, Element("Vertex", index, "U1"));
        CheckFinite({&vertex.m_V1, 1}, Element("Vertex", index, "V1"));
        if (!AreFinite(FloatsOf(vertex.m_Position)))
            return;
    }
    CheckBounds(index);
}

void MeshChecks::CheckBounds(int index) {
    const Vector3& position = m_Mesh.m_Vertices[index].m_Position;
    const float tolerance = std::fabs(m_Mesh.m_BoundingRadius) * kBoundsTolerance;
    float outside = 0.0f;
    for (float Vector3::*const axis : {&Vector3::x, &Vector3::y, &Vector3::z}) {
        outside = std::max({outside, position.*axis - m_Mesh.m_MaxBoundingExtents.*axis,
                            m_Mesh.m_MinBoundingExtents.*axis - position.*axis});
    }
    const double distance =
        std::hypot(static_cast<double>(position.x), static_cast<double>(position.y), static_cast<double>(position.z));
    const double beyond = distance - static_cast<double>(m_Mesh.m_BoundingRadius);
    const char* const what = outside > tolerance                       ? "the stored extents"
                             : beyond > static_cast<double>(tolerance) ? "the stored radius"
                                                                       : nullptr;
    if (what == nullptr)
        return;
    char amount[32];
    std::snprintf(amount, sizeof amount, "%.6g", outside > tolerance ? static_cast<double>(outside) : beyond);
    m_Log.Add(DiagnosticCode::Bounds, {}, Element("Vertex", index, "Position"),
              std::string(amount) + " outside " + what);
}

void MeshChecks::CheckTriangle(int index) {
    const MeshTriangle& triangle = m_Mesh.m_Triangles[index];
    const int vertices = m_Mesh.m_Vertices.GetSize();
    const int corners[] = {triangle.m_iVertex0, triangle.m_iVertex1, triangle.m_iVertex2};
    const auto isIn = [](int value, int count) { return value >= 0 && value < count; };
    const bool areIn = isIn(corners[0], vertices) && isIn(corners[1], vertices) && isIn(corners[2], vertices);
    if (!areIn) {
        for (int corner = 0; corner < 3; ++corner)
            CheckIndex(corners[corner], vertices, "vertex",
                       Element("Triangle", index, "iVertex" + std::to_string(corner)));
    }
    if (!isIn(triangle.m_iMaterial, m_Mesh.m_Materials.GetSize()))
        CheckIndex(triangle.m_iMaterial, m_Mesh.m_Materials.GetSize(), "material",
                   Element("Triangle", index, "iMaterial"));
    const int repeated = corners[0] == corners[1] || corners[0] == corners[2] ? corners[0]
                         : corners[1] == corners[2]                           ? corners[1]
                                                                              : -1;
    if (areIn && repeated >= 0)
        m_Log.Add(DiagnosticCode::DegenerateTriangle, {}, Element("Triangle", index),
                  "vertex " + std::to_string(repeated) + " is there more than once");
}

void MeshChecks::CheckIndex(int value, int count, std::string_view what, const std::string& field) {
    if (value >= 0 && value < count)
        return;
    const std::string plural = what == "vertex" ? "vertices" : std::string(what) + "s";
    m_Log.Add(DiagnosticCode::IndexRange, {}, field,
              std::to_string(value) + ", and there " +
                  (count == 1 ? "is 1 " + std::string(what) : "are " + std::to_string(count) + " " + plural));
}

void MeshChecks::CheckLists() {
    CachedVertexIndices computed;
    ComputeCachedVertexIndices(m_Mesh.m_Vertices, m_Mesh.m_BoundingRadius, computed);
    for (int direction = 0; direction < kDirectionCount; ++direction) {
        const VertexIndexVector& stored = m_Mesh.GetCachedVertexIndices()[direction];
        const LabelText label(kCachedIndexCountLabels[static_cast<std::size_t>(direction)]);
        bool areInRange = true;
        for (int i = 0; i < stored.GetSize(); ++i) {
            if (stored[i] >= 0 && stored[i] < m_Mesh.m_Vertices.GetSize())
                continue;
            areInRange = false;
            CheckIndex(stored[i], m_Mesh.m_Vertices.GetSize(), "vertex", Element(label, i));
        }
        if (!areInRange)
            continue;
        const VertexIndexVector& wanted = computed[direction];
        bool isSame = stored.GetSize() == wanted.GetSize();
        for (int i = 0; isSame && i < stored.GetSize(); ++i)
            isSame = stored[i] == wanted[i];
        if (!isSame)
            m_Log.Add(DiagnosticCode::StaleLists, {}, "MeshData." + std::string(std::string_view(label)),
                      "the list differs from the one that is computed; any conversion writes it anew");
    }
}

} // namespace

void CheckMeshContent(const MeshData& mesh, DiagnosticLog& log) {
    MeshChecks(mesh, log).Run();
}

} // namespace Corvid
