#pragma once
// Updates the line between day and night as time passes.

#include "window/map_state_win.h"

inline constexpr UINT_PTR kSunTimer = 4;

/// Starts the timer of a window. The timer runs until the window is destroyed.
void StartSunTimer(MapWindow& entry) noexcept;

/// Handles a tick of the timer: reads the time zones of Windows, unless they were read before, and
/// moves the day/night line to its current place, except during a flight or while a button is held.
/// Needs MapState because it uses the time zones, the windows, the flight, the repeat and OpenGL.
/// Deliberate: no frame is requested; the next frame shows the change.
void OnSunTimer(MapState& map, HWND window);
