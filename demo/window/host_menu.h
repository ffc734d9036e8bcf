#pragma once
// The menu of a host window.

#include <cstdint>

#include "windows_api.h"

/// Loads the menu, sets its texts in the current language and gives it to the window. The window's
/// old menu is destroyed.
/// @param languageCommand  menu item of the language that gets the mark
/// @param photos  whether the item that opens the photo folder is enabled
void SetLocalizedMenu(HWND window, std::uint32_t languageCommand, bool photos);

/// The map's key (virtual-key code) for a menu command; 0 when the command is not for the map.
int MapKeyOf(std::uint32_t command);
/// How many times that key is sent for one use of the command; 0 when it is not for the map.
int MapKeyRepeats(std::uint32_t command);
