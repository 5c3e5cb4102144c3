#include "Corvid/Gltf/GltfPoints.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>

#include "Corvid/Gltf/GltfNames.h"
#include "Corvid/Gltf/GltfNotes.h"

namespace Corvid {

namespace {

constexpr const char* kPosition = "Position";
constexpr const char* kOrientation = "Orientation";
constexpr const char* kName = "DataString";

constexpr double kRotationTolerance = 1e-4;

using Rows = std::array<std::array<double, 3>, 3>;

// The linear part of a node for the axes of a point, or of a point for the axes of a node: each axis is a row there and
// a column here, and X is negated on both sides.
double Signed(int row, int column, double value) {
    return (row == 0) != (column == 0) ? -value : value;
}

Rows LinearPart(const Matrix33& orientation) {
    Rows rows{};
    for (int axis = 0; axis < 3; ++axis) {
        const Vector3& vector = orientation.GetRow(axis);
        const float components[] = {vector.x, vector.y, vector.z};
        for (int row = 0; row < 3; ++row)
            rows[static_cast<std::size_t>(row)][static_cast<std::size_t>(axis)] = Signed(row, axis, components[row]);
    }
    return rows;
}

bool IsRotation(const Rows& m) {
    for (std::size_t a = 0; a < 3; ++a) {
        for (std::size_t b = 0; b < 3; ++b) {
            const double dot = m[0][a] * m[0][b] + m[1][a] * m[1][b] + m[2][a] * m[2][b];
            if (!(std::abs(dot - (a == b ? 1.0 : 0.0)) <= kRotationTolerance))
                return false;
        }
    }
    return m[0][0] * (m[1][1] * m[2][2] - m[1][2] * m[2][1]) - m[0][1] * (m[1][0] * m[2][2] - m[1][2] * m[2][0]) +
               m[0][2] * (m[1][0] * m[2][1] - m[1][1] * m[2][0]) >
           0.0;
}

// The largest of the four components is taken from its square, the others from it.
std::array<double, 4> QuaternionOf(const Rows& m) {
    const double squares[] = {1 + m[0][0] - m[1][1] - m[2][2], 1 - m[0][0] + m[1][1] - m[2][2],
                              1 - m[0][0] - m[1][1] + m[2][2], 1 + m[0][0] + m[1][1] + m[2][2]}; // of four times each
    std::array<double, 4> q{};
    switch (std::max_element(squares, squares + 4) - squares) {
    case 0:
        q = {squares[0], m[0][1] + m[1][0], m[0][2] + m[2][0], m[2][1] - m[1][2]};
        break;
    case 1:
        q = {m[0][1] + m[1][0], squares[1], m[1][2] + m[2][1], m[0][2] - m[2][0]};
        break;
    case 2:
        q = {m[0][2] + m[2][0], m[1][2] + m[2][1], squares[2], m[1][0] - m[0][1]};
        break;
    default:
        q = {m[2][1] - m[1][2], m[0][2] - m[2][0], m[1][0] - m[0][1], squares[3]};
        break;
    }
    const double length = std::sqrt(q[0] * q[0] + q[1] * q[1] + q[2] * q[2] + q[3] * q[3]);
    for (double& component : q)
        component /= length;
    return q;
}

std::array<float, 3> Components(const Vector3& vector) {
    return {vector.x, vector.y, vector.z};
}

std::array<float, 9> Components(const Matrix33& matrix) {
    return std::bit_cast<std::array<float, 9>>(matrix);
}

bool IsFinite(const Vector3& vector) {
    return std::isfinite(vector.x) && std::isfinite(vector.y) && std::isfinite(vector.z);
}

void Place(const MeshPoint& point, GltfNode& node) {
    const Vector3 position = IsFinite(point.m_Position) ? MirrorX(point.m_Position) : Vector3{};
    node.m_Translation = {position.x, position.y, position.z};
    const Rows rows = LinearPart(point.m_Orientation);
    if (IsRotation(rows))
        node.m_Rotation = QuaternionOf(rows);
}

// Axes of length one; those of a node that is flat there are the engine's own.
Matrix33 OrientationOf(const GltfTransform& world) {
    Matrix33 orientation = Matrix33::Identity();
    for (int axis = 0; axis < 3; ++axis) {
        const double x = Signed(0, axis, world.At(0, axis));
        const double y = Signed(1, axis, world.At(1, axis));
        const double z = Signed(2, axis, world.At(2, axis));
        const double length = std::sqrt(x * x + y * y + z * z);
        if (length > 0.0 && std::isfinite(length))
            orientation.GetRow(axis) = {static_cast<float>(x / length), static_cast<float>(y / length),
                                        static_cast<float>(z / length)};
    }
    return orientation;
}

bool StandsAt(const GltfTransform& world, const GltfNode& node) {
    const GltfTransform expected(node);
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 4; ++column) {
            const double wanted = expected.At(row, column);
            if (!(std::abs(world.At(row, column) - wanted) <= 1e-6 + std::abs(wanted) * 1e-5))
                return false;
        }
    }
    return true;
}

} // namespace

GltfNode MakeGltfPoint(const MeshPoint& point) {
    GltfNode node;
    const std::u16string_view name = point.m_DataString.GetView();
    node.m_Name = ToUtf8(name);
    if (ToUtf16(node.m_Name) != name)
        NoteString(node.m_Notes, kName, name);
    Place(point, node);
    NoteFloats(node.m_Notes, kPosition, Components(point.m_Position));
    NoteFloats(node.m_Notes, kOrientation, Components(point.m_Orientation));
    return node;
}

bool TakeGltfPoint(const GltfNode& node, const GltfTransform& world, MeshPoint& point) {
    MeshPoint noted;
    std::array<float, 3> position;
    std::array<float, 9> orientation;
    const bool hasNotes =
        FindFloats(node.m_Notes, kPosition, position) && FindFloats(node.m_Notes, kOrientation, orientation);
    if (hasNotes) {
        noted.m_Position = {position[0], position[1], position[2]};
        noted.m_Orientation = {{orientation[0], orientation[1], orientation[2]},
                               {orientation[3], orientation[4], orientation[5]},
                               {orientation[6], orientation[7], orientation[8]}};
    }
    GltfNode expected;
    Place(noted, expected);
    if (hasNotes && StandsAt(world, expected)) {
        point.m_Position = noted.m_Position;
        point.m_Orientation = noted.m_Orientation;
    } else {
        point.m_Position = MirrorX({static_cast<float>(world.At(0, 3)), static_cast<float>(world.At(1, 3)),
                                    static_cast<float>(world.At(2, 3))});
        point.m_Orientation = OrientationOf(world);
    }
    const std::u16string shown = ToUtf16(node.m_Name);
    const std::u16string kept = FindString(node.m_Notes, kName).value_or(shown);
    return CopyName(point.m_DataString, ToUtf8(kept) == node.m_Name ? kept : shown);
}

} // namespace Corvid
