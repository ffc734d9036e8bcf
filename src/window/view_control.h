#pragma once
// Input to view, without Windows: what the pointer points at, and where drag, keys and wheel turn
// and move the globe.

#include <cstdint>
#include <optional>

#include "render/geo_point.h"
#include "render/scene.h"
#include "window/view_state.h"

/// Tilt and spin, degrees in [0, 360).
struct ViewAngles {
    double tilt = 0.0;
    double spin = 0.0;
};

/// View and grabbed point when the button went down, degrees.
struct DragAnchor {
    ViewAngles view;
    double latitude = 0.0;
    double longitude = 0.0;
};

/// The near point of `sphere` under a window point.
/// @param x, y          window pixels, y from the bottom; the viewport is the scene's
/// @param withRotation  true: in the globe's frame; false: in the view's frame
/// @return the point (w = 1), empty beside the globe
std::optional<CVector4> PickGlobe(const CScene& scene, const CSphere& sphere, double x, double y,
                                  bool withRotation) noexcept;

/// Makes (x, y) the pointer position and the globe point under it the pointed one. Beside the globe
/// the last pointed point stays; its angles and its projection are refreshed all the same.
/// @return whether (x, y) is on the globe
bool RepickAt(CGeoPoint& geoPoint, const CScene& scene, const CSphere& sphere, std::int32_t x,
              std::int32_t y) noexcept;

/// Turns the view so that the point grabbed at the press stays under the pointer.
/// @param latitude, longitude  of the point under the pointer now, in the view's frame, degrees
ViewAngles DragView(const DragAnchor& press, double latitude, double longitude) noexcept;

/// Turns by whole steps. @param right, up  degrees, as the arrow keys push
/// Upside down, left and right change places, so that the picture moves the way the user pushes.
ViewAngles TurnView(const ViewAngles& view, double right, double up) noexcept;

/// The distance after a step by key (in: nearer), within the limits.
float ZoomByKey(float distance, bool in) noexcept;
/// The distance after wheel notches (positive: the wheel turned towards the user, nearer).
float ZoomByWheel(float distance, std::int32_t notches) noexcept;
/// Whole notches of a WM_MOUSEWHEEL delta. Steps below a notch are lost.
std::int32_t WheelNotches(std::int32_t delta) noexcept;

/// Copies the view to the scene, whose X rotation is the tilt, Y the spin and z the distance.
void ApplyView(const ViewState& view, CScene& scene) noexcept;
