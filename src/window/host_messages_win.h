#pragma once
// The messages that the host sends to a map window.

#include "base/windows_types.h"

/// Handles HORIVO_MSG_CITY: flies to a city and offers the photos of the city.
LRESULT OnShowCity(HWND window, WPARAM wParam, LPARAM lParam);
/// Handles HORIVO_MSG_PHOTOS_CHANGED: reads the photos of a place again when the panel shows this
/// place.
LRESULT OnPhotosChanged(HWND window, WPARAM wParam, LPARAM lParam);
