#include "math/vector4.h"

#include <cmath>

namespace {

constexpr double CVector4::*kComponents[4] = {&CVector4::x, &CVector4::y, &CVector4::z,
                                              &CVector4::w};

}  // namespace

CVector4::CVector4(const float (&xyz)[3]) noexcept
    : x(static_cast<double>(xyz[0])),
      y(static_cast<double>(xyz[1])),
      z(static_cast<double>(xyz[2])) {}

void CVector4::FromPoint(const CVector4& other) noexcept {
    *this = other;
    w = 1.0;
}

void CVector4::Normalize() noexcept {
    const double length = Length(*this);
    if (length == 0.0) return;
    x /= length;
    y /= length;
    z /= length;
}

double& CVector4::operator[](int i) noexcept { return this->*kComponents[i]; }
double CVector4::operator[](int i) const noexcept { return this->*kComponents[i]; }

bool IsFinite(const CVector4& v) noexcept {
    return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}

double Length(const CVector4& v) noexcept { return std::sqrt(Dot(v, v)); }

double Dot(const CVector4& a, const CVector4& b) noexcept {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}
