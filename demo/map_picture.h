#pragma once
// The map picture in the library's data folder. InitMap must have succeeded. What fails is shown to
// the user and written to the log; the map then shows a globe without its surface.

#include "windows_api.h"

/// Copies the picture beside the program into the data folder if there is none, and has the library
/// check what is new there, or is no picture: if it has a good copy, it puts that back.
void InstallMapPicture();

/// Puts the picture beside the program in place of the one in the data folder. The library's
/// pristine copy of that one stays beside it as "map0 before repair.jpg".
/// @param owner  of message boxes
void RepairMapPicture(HWND owner);
