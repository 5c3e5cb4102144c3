#include "Corvid/Gltf/GltfVertex.h"

#include <cmath>

namespace Corvid {

namespace {

constexpr double kUnitTolerance = 1e-3; // of the square of the length; validators allow about 0.013

float FiniteOrZero(float value) {
    return std::isfinite(value) ? value : 0.0f;
}

} // namespace

Vector3 UnitOr(const Vector3& vector, const Vector3& fallback) {
    const double x = vector.x, y = vector.y, z = vector.z;
    const double square = x * x + y * y + z * z; // no float's square overflows or vanishes here
    if (std::abs(square - 1.0) <= kUnitTolerance)
        return vector;
    if (!std::isfinite(square) || square == 0.0)
        return fallback;
    const double factor = 1.0 / std::sqrt(square);
    return {static_cast<float>(x * factor), static_cast<float>(y * factor), static_cast<float>(z * factor)};
}

MeshVertex PlainVertex(const MeshVertex& vertex, bool hasTangents) {
    MeshVertex plain = vertex;
    plain.m_Position = {FiniteOrZero(vertex.m_Position.x), FiniteOrZero(vertex.m_Position.y),
                        FiniteOrZero(vertex.m_Position.z)};
    plain.m_Normal = UnitOr(vertex.m_Normal, {0.0f, 1.0f, 0.0f});
    plain.m_Tangent = hasTangents ? UnitOr(vertex.m_Tangent, {1.0f, 0.0f, 0.0f}) : Vector3{};
    for (float MeshVertex::*coordinate : {&MeshVertex::m_U0, &MeshVertex::m_V0, &MeshVertex::m_U1, &MeshVertex::m_V1})
        plain.*coordinate = FiniteOrZero(vertex.*coordinate);
    return plain;
}

} // namespace Corvid
