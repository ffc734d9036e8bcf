#pragma once
// Converts latitude and longitude to points of the globe and back. Axes of the globe: +Y is the
// North Pole, +Z the point at latitude 0 and longitude 0, +X the point 90 degrees east of +Z.

#include "math/vector4.h"

/// The point at a latitude and longitude (degrees, north and east positive) on a sphere around the
/// origin; w = 1. The coordinates have the unit of `radius`.
CVector4 LatLonToPoint(double latitudeDeg, double longitudeDeg, double radius) noexcept;

/// A place on the globe, north and east positive. The function that returns it names the unit.
struct LatLon {
    double latitude = 0.0;
    double longitude = 0.0;
};

/// Latitude and longitude of `point` in radians. The longitude lies in (-pi/2, 3 pi/2]; it is 0 for
/// a point on the axis of the globe and for the origin.
LatLon PointToLatLon(const CVector4& point) noexcept;
/// The result of PointToLatLon in degrees.
LatLon PointToLatLonDeg(const CVector4& point) noexcept;
