#pragma once

#include "base/windows_types.h"

/// WM_KEYDOWN, from the keyboard or sent by an overlay button. @return what the window answers; a
/// key that the map does not know goes to DefWindowProcW
LRESULT OnKeyDown(HWND window, WPARAM wParam, LPARAM lParam);
