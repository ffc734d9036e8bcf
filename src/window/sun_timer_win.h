#pragma once
// Day and night follow the clock.

#include "window/map_state_win.h"

inline constexpr UINT_PTR kSunTimer = 4;

/// Begins to look at the clock for a window, until it is destroyed.
void StartSunTimer(MapWindow& entry) noexcept;

/// Moves the day/night line to where it is now (the timer ticked).
/// Deliberate: asks for no frame; the change shows with the next one.
void OnSunTimer(MapState& map, HWND window);
