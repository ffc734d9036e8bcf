#pragma once
// The timers of a map window: handles their ticks, also while frames follow each other without a
// pause.

#include "window/map_state_win.h"

/// Removes the due timer messages of `window` from the queue and posts them back, so that the
/// host's loop gets them before the next WM_PAINT. Otherwise all timers, such as those of a flight
/// and of a held button, would stop while each frame requests the next one: Windows delivers timers
/// only when no window needs painting. Needs MapState because each timer is in a different part of
/// MapState.
void PostDueTimers(MapState& map, HWND window) noexcept;

/// Handles WM_TIMER: calls the handler of the timer, if the message is not outdated.
LRESULT OnTimer(HWND window, WPARAM wParam, LPARAM lParam);
