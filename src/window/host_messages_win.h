#pragma once
// The messages of the host.

#include "base/windows_types.h"

/// HORIVO_MSG_CITY from the host.
LRESULT OnShowCity(HWND window, WPARAM wParam, LPARAM lParam);
/// HORIVO_MSG_PHOTOS_CHANGED from the host.
LRESULT OnPhotosChanged(HWND window, WPARAM wParam, LPARAM lParam);
