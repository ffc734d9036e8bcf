#pragma once
// The sample host's windows: its main window, filled by the map, and the hidden one that the map
// asks for consent.

#include <cstdint>
#include <vector>

#include "horivo_map.h"
#include "host_windows.h"

/// Makes the hidden window of class HORIVO_HOST_WINDOW_CLASS, which allows the photos that there
/// are. @param cities  the table that the map has; must outlive the window
/// @return null when Windows refused it
HWND MakeHiddenWindow(const std::vector<CityRecord>& cities);

/// Makes the visible main window with the map in it.
/// @param width, height  of the map, pixels
/// @param status  out: the library's code when the map was refused
/// @return null when either window was refused; nothing is left behind then
HWND MakeHostWindow(int width, int height, std::uint32_t& status);

/// The map of a window that MakeHostWindow made; null once it has been destroyed.
HWND MapOf(HWND host);
