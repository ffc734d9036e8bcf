#pragma once
// The timers of a map window: button repeat, clock, and the dispatch of all of them.

#include "window/map_state_win.h"

inline constexpr UINT_PTR kRepeatTimer = 1;
inline constexpr UINT_PTR kHoverTimer = 3;
inline constexpr UINT_PTR kSunTimer = 4;

void StartSunTimer(MapWindow& entry) noexcept;

/// Begins to repeat the held overlay button.
void StartRepeat(MapState& map, HWND window) noexcept;

/// Takes the due timers of `window` out of the queue and posts them back, so that the host's loop
/// gets them before the next WM_PAINT. Windows hands out timers only when nothing needs painting:
/// frame after frame would hold up a flight, a held button and the clock for as long as it goes on.
void PostDueTimers(MapState& map, HWND window) noexcept;

LRESULT OnTimer(HWND window, WPARAM wParam, LPARAM lParam);
