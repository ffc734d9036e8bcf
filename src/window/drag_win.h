#pragma once
// Turns the globe by the point that the left button has grabbed; pointer_win handles the press.

#include "window/map_state_win.h"

/// Turns the globe so that the grabbed point follows the pointer, which is at `point` now. Does
/// nothing without a grabbed point. Takes the whole state for ApplyViewChange.
void Drag(MapState& map, HWND window, const WindowPoint& point) noexcept;

/// Makes the point under the cursor the anchor of the drag under way, if there is one: the view has
/// moved, and the grabbed point is no longer under the cursor.
void ReanchorDrag(PointerState& pointer, const ViewState& view, GlResources& gl,
                  HWND window) noexcept;
