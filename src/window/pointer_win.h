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

/// Makes the point under the cursor the anchor of the drag that is under way, if one is: the view
/// has moved under the button, and what it grabbed is somewhere else now.
void GrabAgain(MapState& map, HWND window) noexcept;

/// Forgets a press whose release this window cannot see any more: a message box or a switch to
/// another program may have taken the capture.
void GiveUpLostPress(MapState& map, HWND window) noexcept;
