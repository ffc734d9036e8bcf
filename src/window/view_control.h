#pragma once
// Computes the view after a drag, a key or a turn of the wheel. Calls no function of Windows.

#include <cstdint>

#include "render/scene.h"
#include "window/view_state.h"

/// Limits of the camera distance, scene units. Beyond them the near or the far plane would cut the
/// atmosphere.
inline constexpr float kNearestDistance = -4.1F;
inline constexpr float kFarthestDistance = -28.5F;

/// The view at the start of a drag, and the grabbed point: the point of the globe that was under
/// the pointer then, as PickInView returns it. Degrees.
struct DragAnchor {
    ViewAngles view;
    double latitude = 0.0;
    double longitude = 0.0;
};

/// Returns the view that moves the grabbed point under the pointer.
/// @param latitude, longitude  of the point under the pointer now, as PickInView returns them
ViewAngles DragView(const DragAnchor& press, double latitude, double longitude) noexcept;

/// Turns the view by a step of the arrow keys. While the globe is upside down, left and right are
/// exchanged, so that the picture always moves in the direction of the key.
/// @param right, up  degrees
ViewAngles TurnView(const ViewAngles& view, double right, double up) noexcept;

/// The camera distance after one step by key (`in`: nearer), within the limits.
float ZoomByKey(float distance, bool in) noexcept;
/// The camera distance after `notches` of the wheel (positive: nearer), within the limits.
float ZoomByWheel(float distance, std::int32_t notches) noexcept;
/// Whole notches of a WM_MOUSEWHEEL delta; positive when the wheel was turned towards the user.
/// Deliberate: the sign is the opposite of Windows' own, so that turning towards the user zooms in;
/// a remainder below one notch is dropped, not kept for the next message.
std::int32_t WheelNotches(std::int32_t delta) noexcept;

/// Copies the view to the scene: the tilt becomes the rotation about x, the spin the rotation about
/// y, and the camera distance the z of the position.
void ApplyView(const ViewState& view, CScene& scene) noexcept;
