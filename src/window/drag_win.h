#pragma once
// Dragging the globe with the left mouse button. The grabbed point is the point of the globe that
// was under the pointer when the button went down. pointer_win handles the press and the release.

#include "window/map_state_win.h"

/// Notes that the pointer is at `point` now, and turns the globe so that the grabbed point is
/// there. When the press grabbed no point, does not turn the globe. Needs MapState because
/// ApplyViewChange needs it.
void Drag(MapState& map, HWND window, const WindowPoint& point) noexcept;

/// If a drag is under way, makes the globe point under the cursor the anchor of this drag. Call
/// this function after the view has moved: the grabbed point is then no longer under the cursor.
void ReanchorDrag(PointerState& pointer, const ViewState& view, GlResources& gl,
                  HWND window) noexcept;
