#include "math/matrix4.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int kSide = 4;
constexpr int kElements = kSide * kSide;

constexpr int At(int row, int column) noexcept { return kSide * row + column; }

// Elements of the translation column.
constexpr int kTranslationX = At(0, 3);
constexpr int kTranslationY = At(1, 3);
constexpr int kTranslationZ = At(2, 3);

/// The rotation by `radians` in the plane of two axes, from axis `first` towards axis `second`.
CMatrix4 PlaneRotation(int first, int second, double radians) noexcept {
    const double c = std::cos(radians);
    const double s = std::sin(radians);
    CMatrix4 rotation;
    rotation[At(first, first)] = c;
    rotation[At(first, second)] = -s;
    rotation[At(second, first)] = s;
    rotation[At(second, second)] = c;
    return rotation;
}

void DivideRow(CMatrix4& m, int row, double divisor) noexcept {
    for (int c = 0; c < kSide; ++c) m[At(row, c)] /= divisor;
}

void SubtractRow(CMatrix4& m, int row, double factor, int source) noexcept {
    for (int c = 0; c < kSide; ++c) m[At(row, c)] -= factor * m[At(source, c)];
}

}  // namespace

void CMatrix4::SetIdentity() noexcept {
    std::fill_n(m_, kElements, 0.0);
    for (int i = 0; i < kSide; ++i) m_[At(i, i)] = 1.0;
}

void CMatrix4::Multiply(const CMatrix4& right) noexcept { Multiply(*this, *this, right); }

void CMatrix4::Multiply(CMatrix4& out, const CMatrix4& a, const CMatrix4& b) noexcept {
    CMatrix4 product;
    for (int r = 0; r < kSide; ++r) {
        for (int c = 0; c < kSide; ++c) {
            double sum = 0.0;
            for (int k = 0; k < kSide; ++k) sum += a[At(r, k)] * b[At(k, c)];
            product[At(r, c)] = sum;
        }
    }
    out = product;
}

// RotateY turns from Z to X, so that all three rotations are counter-clockwise when seen from the
// tip of their axis.
void CMatrix4::RotateX(double radians) noexcept { Multiply(PlaneRotation(1, 2, radians)); }
void CMatrix4::RotateY(double radians) noexcept { Multiply(PlaneRotation(2, 0, radians)); }
void CMatrix4::RotateZ(double radians) noexcept { Multiply(PlaneRotation(0, 1, radians)); }

void CMatrix4::SetTranslation(double x, double y, double z) noexcept {
    m_[kTranslationX] = x;
    m_[kTranslationY] = y;
    m_[kTranslationZ] = z;
}

void CMatrix4::Transpose(CMatrix4& out) const noexcept {
    const CMatrix4 source = *this;
    for (int r = 0; r < kSide; ++r) {
        for (int c = 0; c < kSide; ++c) out[At(c, r)] = source[At(r, c)];
    }
}

void CMatrix4::Transpose() noexcept { Transpose(*this); }

void CMatrix4::Invert() noexcept {
    CMatrix4 inverse;
    for (int i = 0; i < kSide; ++i) {
        const double pivot = m_[At(i, i)];
        if (pivot != 1.0) {
            DivideRow(*this, i, pivot);
            DivideRow(inverse, i, pivot);
        }
        for (int j = 0; j < kSide; ++j) {
            const double factor = m_[At(j, i)];
            if (j == i || factor == 0.0) continue;
            SubtractRow(*this, j, factor, i);
            SubtractRow(inverse, j, factor, i);
        }
    }
    *this = inverse;
}

void CMatrix4::Transform(CVector4& v) const noexcept { Transform(v, *this, v); }

void CMatrix4::Transform(CVector4& out, const CMatrix4& m, const CVector4& v) noexcept {
    const CVector4 source = v;
    for (int r = 0; r < kSide; ++r) {
        out[r] = m[At(r, 0)] * source.x + m[At(r, 1)] * source.y + m[At(r, 2)] * source.z +
                 m[At(r, 3)] * source.w;
    }
}

void CMatrix4::TransformPoints(double* points, int count, const CMatrix4& m) noexcept {
    for (int i = 0; i < count; ++i, points += 3) {
        const double x = points[0];
        const double y = points[1];
        const double z = points[2];
        for (int r = 0; r < 3; ++r) {
            points[r] = m[At(r, 0)] * x + m[At(r, 1)] * y + m[At(r, 2)] * z + m[At(r, 3)];
        }
    }
}
