#pragma once
// The mouse on the globe: pointing, dragging, clicking, the wheel.

#include "window/map_state_win.h"

LRESULT OnMouseMove(HWND window, WPARAM wParam, LPARAM lParam);
LRESULT OnButtonDown(HWND window, WPARAM wParam, LPARAM lParam);
LRESULT OnButtonUp(HWND window, WPARAM wParam, LPARAM lParam);
LRESULT OnMouseWheel(HWND window, WPARAM wParam, LPARAM lParam);
LRESULT OnMouseLeave(HWND window, WPARAM wParam, LPARAM lParam);

/// Picks again at the last pointer position, after the view has changed.
void RepickAtPointer(MapState& map, HWND window) noexcept;

/// Makes the point under the cursor the anchor of the drag that is under way.
void GrabUnderCursor(MapState& map, HWND window) noexcept;
