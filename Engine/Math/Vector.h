#pragma once

#include <cmath>

namespace Corvid {

// Plain values with no initial value of their own, so that large arrays of them need not be cleared: write Vector3{}
// for zero.
struct Vector3 {
    float x, y, z;

    friend bool operator==(const Vector3&, const Vector3&) = default;
    friend Vector3 operator+(const Vector3& a, const Vector3& b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
    friend Vector3 operator-(const Vector3& a, const Vector3& b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
    friend Vector3 operator*(const Vector3& a, float factor) { return {a.x * factor, a.y * factor, a.z * factor}; }
};

inline float Dot(const Vector3& a, const Vector3& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

inline float Distance(const Vector3& a, const Vector3& b) {
    const Vector3 difference = a - b;
    return std::sqrt(Dot(difference, difference));
}

struct Vector4 {
    float x, y, z, w;

    friend bool operator==(const Vector4&, const Vector4&) = default;
};

} // namespace Corvid
