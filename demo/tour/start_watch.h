#pragma once
// How long the program takes to its first whole picture.

#include "window/host_windows.h"

/// Pumps messages until `map` has drawn a frame with its surface, then prints a line of JSON with
/// the moment, ms since 1970, and the most memory that the process has held, MiB.
/// @return false when nothing was drawn within a minute
bool WatchStart(HWND map);
