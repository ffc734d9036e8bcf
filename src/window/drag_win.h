#pragma once
// Dragging the globe with the left mouse button. pointer_win handles the press and the release.

#include "window/map_state_win.h"

/// Turns the globe so that the grabbed point follows the pointer, which is at `point` now. Does
/// nothing without a grabbed point. Needs MapState because ApplyViewChange does.
void Drag(MapState& map, HWND window, const WindowPoint& point) noexcept;

/// Makes the point under the cursor the anchor of the drag under way, if there is one. Call this
/// function after the view has moved: the grabbed point is then no longer under the cursor.
void ReanchorDrag(PointerState& pointer, const ViewState& view, GlResources& gl,
                  HWND window) noexcept;
