#pragma once

#include "Engine/Math/Vector.h"
#include "Engine/Report/Reporter.h"

namespace Corvid {

// Nine floats row by row. In an orientation row 0 is the X (right) axis, row 1 the Y (up) axis, row 2 the Z (front)
// axis. Zero until set.
class Matrix33 {
public:
    static Matrix33 Identity() { return {{1.0f, 0.0f, 0.0f}, {0.0f, 1.0f, 0.0f}, {0.0f, 0.0f, 1.0f}}; }

    Matrix33() = default;
    Matrix33(const Vector3& right, const Vector3& up, const Vector3& front) : m_Rows{right, up, front} {}

    // An index outside is reported; the first row then stands in.
    Vector3& GetRow(int row) { return m_Rows[Check((0 <= row) && (row < 3), "(0 <= row) && (row < 3)") ? row : 0]; }
    const Vector3& GetRow(int row) const { return const_cast<Matrix33&>(*this).GetRow(row); }

    float& At(int row, int column) {
        Vector3& values = GetRow(row);
        const bool isInside = Check((0 <= column) && (column < 3), "(0 <= column) && (column < 3)");
        return !isInside || column == 0 ? values.x : column == 1 ? values.y : values.z;
    }

    friend bool operator==(const Matrix33&, const Matrix33&) = default;

private:
    Vector3 m_Rows[3]{};
};

// Sixteen floats row by row; zero until set.
class Matrix44 {
public:
    Vector4& GetRow(int row) { return m_Rows[Check((0 <= row) && (row < 4), "(0 <= row) && (row < 4)") ? row : 0]; }
    const Vector4& GetRow(int row) const { return const_cast<Matrix44&>(*this).GetRow(row); }

    float& At(int row, int column) {
        Vector4& values = GetRow(row);
        const bool isInside = Check((0 <= column) && (column < 4), "(0 <= column) && (column < 4)");
        return !isInside || column == 0 ? values.x : column == 1 ? values.y : column == 2 ? values.z : values.w;
    }

    friend bool operator==(const Matrix44&, const Matrix44&) = default;

private:
    Vector4 m_Rows[4]{};
};

} // namespace Corvid
