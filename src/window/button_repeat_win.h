#pragma once
// An overlay button that is held: its key comes again and again.

#include "window/map_state_win.h"

inline constexpr UINT_PTR kRepeatTimer = 1;

/// Begins to repeat the held button.
void StartButtonRepeat(MapState& map, HWND window) noexcept;

/// Forgets a press whose release this window cannot see any more: a message box or a switch to
/// another program may have taken the capture.
void GiveUpLostPress(MapState& map, HWND window) noexcept;

/// Sends the key of the held button once more (the timer ticked).
void OnRepeatTimer(MapState& map, HWND window);
