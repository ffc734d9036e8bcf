#pragma once
// The messages that the host sends to a map window.

#include "base/windows_types.h"

/// HORIVO_MSG_CITY: flies to a city and offers its photos.
LRESULT OnShowCity(HWND window, WPARAM wParam, LPARAM lParam);
/// HORIVO_MSG_PHOTOS_CHANGED: reads the photos again when the panel shows this place.
LRESULT OnPhotosChanged(HWND window, WPARAM wParam, LPARAM lParam);
