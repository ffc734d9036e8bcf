#pragma once
// Handles the messages of a worker that has loaded or split the map picture, or has failed.

#include "window/map_state_win.h"

/// Sets a detail factor (percent) and loads the picture for it. Does nothing for a window that is
/// not live. Needs MapState because it uses the windows, the level of detail, the picture, OpenGL
/// and the loader.
void LoadAtDetail(MapState& map, HWND window, std::int32_t factor);

/// Handles kStageDoneMessage: starts the next stage, attaches the tiles, or reports failure.
LRESULT OnStageDone(HWND window, WPARAM wParam, LPARAM lParam);
