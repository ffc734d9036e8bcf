#pragma once
// What lies under a point of a map window.

#include <optional>

#include "math/geographic.h"
#include "window/map_state_win.h"

/// A point of a window, pixels.
struct WindowPoint {
    std::int32_t x;
    std::int32_t y;  // from the bottom
};

/// Lets picking use the size of `window`. @return false while it has none
bool UseSizeOf(MapState& map, HWND window) noexcept;

/// Makes `point` the pointer position and the place under it the pointed one.
/// @return whether `point` is on the globe
bool UpdatePick(MapState& map, HWND window, const WindowPoint& point) noexcept;
/// The same at the last pointer position, after the view has changed.
void UpdatePickAtPointer(MapState& map, HWND window) noexcept;

/// The place of the globe under `point` in the view's frame, degrees; empty beside the globe.
std::optional<LatLon> PickInView(MapState& map, HWND window, const WindowPoint& point) noexcept;
