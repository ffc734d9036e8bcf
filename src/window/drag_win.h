#pragma once
// Dragging the globe with the left mouse button. pointer_win handles the press and the release.

#include "window/map_state_win.h"

/// Turns the globe so that the grabbed point follows the pointer, which is at `point` now. Does
/// nothing when the press grabbed no point. Needs MapState because ApplyViewChange needs it.
void Drag(MapState& map, HWND window, const WindowPoint& point) noexcept;

/// If a drag is under way, makes the globe point under the cursor the anchor of this drag. Call
/// this function after the view has moved: the grabbed point is then no longer under the cursor.
void ReanchorDrag(PointerState& pointer, const ViewState& view, GlResources& gl,
                  HWND window) noexcept;
