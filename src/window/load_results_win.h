#pragma once
// What the window does when a worker has loaded or split the map picture, or has failed.

#include "window/map_state_win.h"

/// Sets a detail factor (percent) and loads the picture for it. Does nothing for a window that is
/// not live. Takes the whole state: windows, detail, picture, OpenGL and loader.
void LoadAtDetail(MapState& map, HWND window, std::int32_t factor);

/// kStageDoneMessage: starts the next stage, attaches the tiles, or reports failure.
LRESULT OnStageDone(HWND window, WPARAM wParam, LPARAM lParam);
