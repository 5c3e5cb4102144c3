#include "Corvid/Gltf/GltfTransform.h"

namespace Corvid {

namespace {

std::array<std::array<double, 3>, 3> RotationOf(const std::array<double, 4>& quaternion) {
    const auto [x, y, z, w] = quaternion;
    return {{{1 - 2 * (y * y + z * z), 2 * (x * y - z * w), 2 * (x * z + y * w)},
             {2 * (x * y + z * w), 1 - 2 * (x * x + z * z), 2 * (y * z - x * w)},
             {2 * (x * z - y * w), 2 * (y * z + x * w), 1 - 2 * (x * x + y * y)}}};
}

} // namespace

GltfTransform::GltfTransform(const GltfNode& node) {
    const auto rotation = RotationOf(node.m_Rotation);
    for (std::size_t row = 0; row < 3; ++row) {
        for (std::size_t column = 0; column < 3; ++column)
            m_Rows[row][column] =
                node.m_Matrix ? (*node.m_Matrix)[column * 4 + row] : rotation[row][column] * node.m_Scale[column];
        m_Rows[row][3] = node.m_Matrix ? (*node.m_Matrix)[12 + row] : node.m_Translation[row];
    }
}

GltfTransform GltfTransform::operator*(const GltfTransform& inner) const {
    GltfTransform result;
    for (std::size_t row = 0; row < 3; ++row) {
        for (std::size_t column = 0; column < 4; ++column) {
            double sum = column == 3 ? m_Rows[row][3] : 0.0;
            for (std::size_t i = 0; i < 3; ++i)
                sum += m_Rows[row][i] * inner.m_Rows[i][column];
            result.m_Rows[row][column] = sum;
        }
    }
    return result;
}

bool GltfTransform::IsIdentity() const {
    return m_Rows == GltfTransform().m_Rows;
}

double GltfTransform::Cofactor(int row, int column) const {
    const int r1 = (row + 1) % 3, r2 = (row + 2) % 3, c1 = (column + 1) % 3, c2 = (column + 2) % 3;
    return At(r1, c1) * At(r2, c2) - At(r1, c2) * At(r2, c1);
}

bool GltfTransform::Mirrors() const {
    return At(0, 0) * Cofactor(0, 0) + At(0, 1) * Cofactor(0, 1) + At(0, 2) * Cofactor(0, 2) < 0.0;
}

Vector3 GltfTransform::ApplyToDirection(const Vector3& direction) const {
    const auto row = [&](int i) {
        return static_cast<float>(At(i, 0) * direction.x + At(i, 1) * direction.y + At(i, 2) * direction.z);
    };
    return {row(0), row(1), row(2)};
}

Vector3 GltfTransform::ApplyToPosition(const Vector3& position) const {
    const auto row = [&](int i) {
        return static_cast<float>(At(i, 0) * position.x + At(i, 1) * position.y + At(i, 2) * position.z + At(i, 3));
    };
    return {row(0), row(1), row(2)};
}

// By the cofactors, which are the inverse's transpose but for the determinant: they exist where that does not.
Vector3 GltfTransform::ApplyToNormal(const Vector3& normal) const {
    const double sign = Mirrors() ? -1.0 : 1.0;
    const auto row = [&](int i) {
        return static_cast<float>(sign *
                                  (Cofactor(i, 0) * normal.x + Cofactor(i, 1) * normal.y + Cofactor(i, 2) * normal.z));
    };
    return {row(0), row(1), row(2)};
}

} // namespace Corvid
