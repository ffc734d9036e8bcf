#pragma once
// The timers of a map window: what is done at each tick, and how timers are handled while frames
// follow each other without a pause.

#include "window/map_state_win.h"

/// Takes the due timers of `window` out of the queue and posts them back, so that the host's loop
/// gets them before the next WM_PAINT. Windows delivers timers only when nothing needs painting:
/// while each frame requests the next one, a flight, a held button and the clock would stop.
/// Takes the whole state, because each timer is in a different part of it.
void PostDueTimers(MapState& map, HWND window) noexcept;

/// WM_TIMER.
LRESULT OnTimer(HWND window, WPARAM wParam, LPARAM lParam);
