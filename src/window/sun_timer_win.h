#pragma once
// Makes day and night follow the clock.

#include "window/map_state_win.h"

inline constexpr UINT_PTR kSunTimer = 4;

/// Starts the timer of a window; it runs until the window is destroyed.
void StartSunTimer(MapWindow& entry) noexcept;

/// Moves the day/night line to where it is now (the timer ticked); not during a flight or while a
/// button is held. Takes the whole state: zones, windows, flight, held button and OpenGL.
/// Deliberate: no frame is requested; the change shows with the next one.
void OnSunTimer(MapState& map, HWND window);
