#pragma once
// Creation, destruction and size of a map window.

#include "base/windows_types.h"

/// The answer to WM_CREATE that refuses the window.
inline constexpr LRESULT kRefuseCreation = -1;

LRESULT OnCreate(HWND window, WPARAM wParam, LPARAM lParam);
LRESULT OnDestroy(HWND window, WPARAM wParam, LPARAM lParam);
LRESULT OnSize(HWND window, WPARAM wParam, LPARAM lParam);
