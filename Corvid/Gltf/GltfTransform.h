#pragma once

#include <array>

#include "Corvid/Gltf/GltfDocument.h"
#include "Engine/Math/Vector.h"

namespace Corvid {

// Where a node stands, in glTF's coordinates: a linear part, row by row, and a translation.
class GltfTransform {
public:
    GltfTransform() = default;
    explicit GltfTransform(const GltfNode& node); // in its parent

    GltfTransform operator*(const GltfTransform& inner) const;

    bool IsIdentity() const;
    bool Mirrors() const;
    double At(int row, int column) const { return m_Rows[Index(row)][Index(column)]; } // column 3: the translation

    Vector3 ApplyToPosition(const Vector3& position) const;
    Vector3 ApplyToDirection(const Vector3& direction) const; // not of length one
    Vector3 ApplyToNormal(const Vector3& normal) const;       // not of length one

private:
    static std::size_t Index(int i) { return static_cast<std::size_t>(i); }
    double Cofactor(int row, int column) const;

    std::array<std::array<double, 4>, 3> m_Rows{{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}}};
};

// glTF is right-handed, the engine left-handed: X is negated on the way in and on the way out, every bit else stays.
inline Vector3 MirrorX(const Vector3& vector) {
    return {-vector.x, vector.y, vector.z};
}

} // namespace Corvid
