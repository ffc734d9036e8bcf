#pragma once
// How the timers of a map window reach those that they belong to.

#include "window/map_state_win.h"

/// Takes the due timers of `window` out of the queue and posts them back, so that the host's loop
/// gets them before the next WM_PAINT. Windows hands out timers only when nothing needs painting:
/// frame after frame would hold up a flight, a held button and the clock for as long as it goes on.
void PostDueTimers(MapState& map, HWND window) noexcept;

LRESULT OnTimer(HWND window, WPARAM wParam, LPARAM lParam);
