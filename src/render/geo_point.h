#pragma once

#include <cstdint>

#include "math/vector4.h"

class CScene;

/// The geographic point under the pointer and the anchor of a drag. Window thread.
struct CGeoPoint {
    bool valid = false;       ///< leave-tracking is armed: the pointer is inside the window
    std::int32_t mouseX = 0;  ///< window pixels
    std::int32_t mouseY = 0;  ///< window pixels, counted from the bottom
    double latitudeDeg = 0.0;
    double longitudeDeg = 0.0;
    double latitudeRad = 0.0;
    double longitudeRad = 0.0;
    double pressTilt = 0.0;       ///< view angles at the press, degrees
    double pressSpin = 0.0;       ///< degrees
    double pressLatitude = 0.0;   ///< the grabbed point in the view's frame, degrees
    double pressLongitude = 0.0;  ///< degrees
    CVector4 globePoint;          ///< in the globe's frame; the origin until the first hit
    CVector4 windowPoint;         ///< its projection, window pixels
};

/// Refreshes the angles and the projection from `globePoint` (only the camera's rotation is applied
/// before projecting). Does nothing while `globePoint` is still the origin.
void UpdateGeoPoint(CGeoPoint& geoPoint, const CScene& scene) noexcept;
