#pragma once

#include <array>

/// A point or direction in homogeneous coordinates. Points have w = 1.
class CVector4 {
public:
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
    double w = 1.0;

    constexpr CVector4() noexcept = default;
    constexpr CVector4(double x_, double y_, double z_, double w_) noexcept
        : x(x_), y(y_), z(z_), w(w_) {}
    /// The point with these three coordinates; w = 1.
    explicit CVector4(const float (&xyz)[3]) noexcept;

    /// Copies x, y and z of `other` and sets w to 1.
    void FromPoint(const CVector4& other) noexcept;

    /// Divides x, y and z by the length of (x, y, z); a zero vector and w stay unchanged.
    void Normalize() noexcept;

    /// Component 0..3 (x, y, z, w); no range check.
    double& operator[](int i) noexcept;
    double operator[](int i) const noexcept;
};

/// Whether none of x, y and z is infinite or NaN.
bool IsFinite(const CVector4& v) noexcept;
/// Length of (x, y, z).
double Length(const CVector4& v) noexcept;
/// Scalar product of the first three components.
double Dot(const CVector4& a, const CVector4& b) noexcept;
