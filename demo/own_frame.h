#pragma once
// A frame of its own for the map where Wine cannot show it inside another window.

#include "host_windows.h"

/// Whether OpenGL in a child window stays invisible here. True under Wine, false on Windows.
bool NeedsOwnFrame();

/// Turns the child `map` into a framed window of its own that `owner`, which stays hidden, owns:
/// the map's messages still go to it. Closing the frame closes `owner`.
/// @param width, height  of the map inside the frame, pixels
void GiveOwnFrame(HWND map, HWND owner, int width, int height);
