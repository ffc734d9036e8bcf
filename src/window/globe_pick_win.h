#pragma once
// Finds the place of the globe under a point of a map window.

#include <optional>

#include "math/geographic.h"
#include "window/gl_resources_win.h"
#include "window/pointer_state.h"

/// Stores `point` as the pointer position, and the place under it as the pointed place. Does
/// nothing while no place can be picked in `window`. @return whether `point` is on the globe
bool UpdatePick(PointerState& pointer, GlResources& gl, HWND window,
                const WindowPoint& point) noexcept;

/// Returns the place under `point` on a globe that does not turn with the view: the latitude and
/// longitude, in degrees, that this pixel would show if tilt and spin were 0. Empty when `point` is
/// beside the globe.
std::optional<LatLon> PickInView(GlResources& gl, HWND window, const WindowPoint& point) noexcept;
