#pragma once

#include "base/windows_types.h"

/// Handles WM_KEYDOWN from the keyboard or from a button over the map. Passes keys that the map
/// does not use to DefWindowProcW.
LRESULT OnKeyDown(HWND window, WPARAM wParam, LPARAM lParam);
