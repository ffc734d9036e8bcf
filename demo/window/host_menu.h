#pragma once
// The menu of a host window.

#include <cstdint>

#include "windows_api.h"

/// Loads the menu, sets its texts in the current language and gives it to the window. The window's
/// old menu is destroyed.
/// @param languageCommand  menu item of the language that gets the mark
/// @param photos  whether the item that opens the photo folder is enabled
void SetLocalizedMenu(HWND window, std::uint32_t languageCommand, bool photos);

/// Sends the map the keys of a menu command, if it is one for the map.
/// @param map  null: nothing happens
void PressMapKeys(HWND map, std::uint32_t command);
