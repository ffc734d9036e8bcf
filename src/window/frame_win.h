#pragma once

#include "base/windows_types.h"

/// Handles WM_PAINT: paints one frame of a map window.
LRESULT OnPaint(HWND window, WPARAM wParam, LPARAM lParam);
