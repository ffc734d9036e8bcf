#pragma once

#include "base/windows_types.h"

/// WM_KEYDOWN, from the keyboard or sent by an overlay button. Passes keys that the map does not
/// use on to DefWindowProcW.
LRESULT OnKeyDown(HWND window, WPARAM wParam, LPARAM lParam);
