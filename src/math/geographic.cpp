#include "math/geographic.h"

#include <cmath>

#include "math/angles.h"

namespace {

/// Arc sine of a / b. The quotient is clamped, because rounding may put it just outside [-1, 1].
double ArcSineOfQuotient(double a, double b) noexcept { return std::asin(Clamp(a / b, -1.0, 1.0)); }

}  // namespace

CVector4 LatLonToPoint(double latitudeDeg, double longitudeDeg, double radius) noexcept {
    const double latitude = DegToRad(latitudeDeg);
    const double longitude = DegToRad(longitudeDeg);
    return {radius * std::cos(latitude) * std::sin(longitude), radius * std::sin(latitude),
            radius * std::cos(latitude) * std::cos(longitude), 1.0};
}

LatLon PointToLatLon(const CVector4& point) noexcept {
    LatLon place;
    const double length = Length(point);
    if (length != 0.0) place.latitude = ArcSineOfQuotient(point.y, length);
    const double fromAxis = std::sqrt(point.x * point.x + point.z * point.z);
    if (fromAxis != 0.0) place.longitude = ArcSineOfQuotient(point.x, fromAxis);
    if (point.z < 0.0 && fromAxis != 0.0) place.longitude = kPi - place.longitude;
    return place;
}

LatLon PointToLatLonDeg(const CVector4& point) noexcept {
    const LatLon place = PointToLatLon(point);
    return {RadiansToDegrees(place.latitude), RadiansToDegrees(place.longitude)};
}
