#pragma once
// Turning the globe by the point that the left button grabbed.

#include "window/pick_win.h"

/// Remembers what a press grabbed; a press beside the globe grabs nothing, so that a drag from
/// there does not turn the globe by an older anchor.
void BeginDrag(MapState& map, HWND window, const WindowPoint& point) noexcept;

/// Turns the globe so that the grabbed point follows the pointer, which is at `point` now.
void Drag(MapState& map, HWND window, const WindowPoint& point) noexcept;

/// Makes the point under the cursor the anchor of the drag that is under way, if one is: the view
/// has moved under the button, and what it grabbed is somewhere else now.
void ReanchorDrag(MapState& map, HWND window) noexcept;
