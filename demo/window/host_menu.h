#pragma once
// The menu of a host window.

#include <cstdint>

#include "windows_api.h"

/// Loads the menu, sets its texts in the current language and shows it in the window. Destroys the
/// window's old menu.
/// @param languageCommand  menu item of the chosen language, which gets a mark
/// @param photos  whether the item that opens the photo folder is enabled
void SetLocalizedMenu(HWND window, std::uint32_t languageCommand, bool photos);

/// Sends the map the key presses for a menu command; does nothing for a command that is not for the
/// map.
/// @param map  may be null: nothing is sent then
void PressMapKeys(HWND map, std::uint32_t command);
