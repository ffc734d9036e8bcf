#pragma once
// Converts latitude and longitude to points of the globe and back. Axes of the globe: +Y is the
// North Pole, +Z the point at latitude 0 and longitude 0, +X the point 90 degrees east of +Z.

#include "math/vector4.h"

/// The point at a latitude and longitude (degrees, north and east positive) on a sphere; w = 1.
CVector4 LatLonToPoint(double latitudeDeg, double longitudeDeg, double radius) noexcept;

struct LatLon {
    double latitude = 0.0;
    double longitude = 0.0;
};

/// Latitude and longitude of `point` in radians. The longitude lies in (-pi/2, 3 pi/2]; it is 0 on
/// the axis and at the origin.
LatLon PointToLatLon(const CVector4& point) noexcept;
/// The result of PointToLatLon in degrees.
LatLon PointToLatLonDeg(const CVector4& point) noexcept;
