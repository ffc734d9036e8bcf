#pragma once

#include "math/vector4.h"

/// A 4 x 4 matrix in row-major order: element (row r, column c) has the index 4 r + c. Vectors are
/// columns, multiplied on the right; the translation is in elements 3, 7 and 11. OpenGL expects the
/// transposed order: transpose a copy before passing it.
class CMatrix4 {
public:
    /// The identity.
    CMatrix4() noexcept { SetIdentity(); }

    void SetIdentity() noexcept;

    /// this = this x right.
    void Multiply(const CMatrix4& right) noexcept;
    /// out = a x b; `out` may be `a` or `b`.
    static void Multiply(CMatrix4& out, const CMatrix4& a, const CMatrix4& b) noexcept;

    /// this = this x rotation about the axis by `radians`, counter-clockwise seen from the tip of
    /// the axis.
    void RotateX(double radians) noexcept;
    void RotateY(double radians) noexcept;
    void RotateZ(double radians) noexcept;

    /// Sets the translation, elements 3, 7 and 11; all other elements stay unchanged.
    void SetTranslation(double x, double y, double z) noexcept;

    /// out(c, r) = this(r, c).
    void Transpose(CMatrix4& out) const noexcept;
    void Transpose() noexcept;

    /// Inverts the matrix in place (Gauss-Jordan elimination).
    /// Deliberate: there is no pivoting and no check; a zero pivot gives non-finite elements.
    void Invert() noexcept;

    /// v = this x v, all four rows.
    void Transform(CVector4& v) const noexcept;
    static void Transform(CVector4& out, const CMatrix4& m, const CVector4& v) noexcept;

    /// Transforms `count` packed points (x, y, z each) by rows 0 to 2 of `m`; row 3 is ignored.
    static void TransformPoints(double* points, int count, const CMatrix4& m) noexcept;

    double& operator[](int i) noexcept { return m_[i]; }
    double operator[](int i) const noexcept { return m_[i]; }
    const double* Data() const noexcept { return m_; }

private:
    double m_[16];
};
