#pragma once
// The map picture in the library's data folder. InitMap must have succeeded. Both functions show a
// failure in a message box and write it to the log. Without a good picture the map shows a globe
// without its surface.

#include "windows_api.h"

/// Copies "map.jpg" from the folder of the program into the data folder when it is missing there.
/// Calls InstallMap for a picture that is new or is not a JPEG; InstallMap replaces a bad picture
/// by its pristine copy "map0.jpg".
void InstallMapPicture();

/// Replaces the picture in the data folder by the one in the folder of the program. Renames the
/// pristine copy of the old picture to "map0 before repair.jpg", or deletes it when a file has that
/// name already.
/// @param owner  owner of message boxes
void RepairMapPicture(HWND owner);
