#pragma once
// The worker threads that load and cut the map picture, and what the window does when one is done.

#include "window/map_state_win.h"

/// Posted by a worker to its window: wParam the stage, lParam 1 for success, 0 for failure.
inline constexpr UINT kStageDoneMessage = WM_USER + 1;
inline constexpr WPARAM kLoadStage = 0;
inline constexpr WPARAM kSplitStage = 1;

/// Starts the load of the map picture for `window`, which gets the message when it is done. Any
/// number of loads and splits may be under way; they take turns and end in one right set of tiles.
void StartLoad(HWND window);

/// Puts a detail factor (percent) in force and loads the picture for it. Does nothing for a window
/// that is not live.
void LoadAtDetail(MapState& map, HWND window, std::int32_t factor);

/// Takes a worker's message: goes on to the next stage, attaches the tiles, or reports failure.
void OnStageDone(HWND window, WPARAM stage, bool success);
