#pragma once
// The menu of a host window.

#include <cstdint>

#include "window/host_windows.h"

/// Gives the window a fresh menu in the present language; its old one is destroyed.
/// @param languageCommand  of the language to be marked
/// @param photos  whether the photo folder can be opened
void GiveMenu(HWND window, std::uint32_t languageCommand, bool photos);

/// The key that does a menu command on the map; 0 when it is no command for the map.
int MapKeyOf(std::uint32_t command);
/// How often the map gets that key for one use of the menu.
int MapKeyRepeats(std::uint32_t command);
