#pragma once
// The timers of a map window: button repeat, clock, and the dispatch of all of them.

#include "window/map_state_win.h"

inline constexpr UINT_PTR kRepeatTimer = 1;
inline constexpr UINT_PTR kHoverTimer = 3;
inline constexpr UINT_PTR kSunTimer = 4;

void StartSunTimer(MapWindow& entry) noexcept;

/// Begins to repeat the held overlay button.
void StartRepeat(MapState& map, HWND window) noexcept;

LRESULT OnTimer(HWND window, WPARAM wParam, LPARAM lParam);
