#pragma once

#include <cstdint>

#include "math/vector4.h"

class CScene;

/// The position of the pointer, the point of the globe under it, and the start of a drag. Window
/// thread.
///
/// The globe's frame (see math/geographic.h) turns with the globe. The view's frame does not: its
/// origin is the centre of the globe, too, but its axes are those of the camera. ViewAngles
/// describes tilt and spin.
struct CGeoPoint {
    bool valid = false;       ///< the pointer is inside the window
    std::int32_t mouseX = 0;  ///< window pixels, from the left edge
    std::int32_t mouseY = 0;  ///< window pixels, from the bottom upward
    double latitudeDeg = 0.0;
    double longitudeDeg = 0.0;
    double latitudeRad = 0.0;
    double longitudeRad = 0.0;
    double pressTilt = 0.0;       ///< tilt of the view when the mouse button went down, degrees
    double pressSpin = 0.0;       ///< spin of the view when the mouse button went down, degrees
    double pressLatitude = 0.0;   ///< latitude of the grabbed point in the view's frame, degrees
    double pressLongitude = 0.0;  ///< longitude of the grabbed point in the view's frame, degrees
    CVector4 globePoint;          ///< in the globe's frame; the origin before the first pick
    CVector4 windowPoint;         ///< projection of globePoint, window pixels, y upward
};

/// Computes latitude, longitude and `windowPoint` from `globePoint`. Does nothing while
/// `globePoint` is the origin.
void UpdateGeoPoint(CGeoPoint& geoPoint, const CScene& scene) noexcept;
