#pragma once
// Birth, death and size of a map window.

#include "base/windows_types.h"

/// What WM_CREATE answers to refuse the window.
inline constexpr LRESULT kRefuseCreation = -1;

LRESULT OnCreate(HWND window, WPARAM wParam, LPARAM lParam);
LRESULT OnDestroy(HWND window, WPARAM wParam, LPARAM lParam);
LRESULT OnSize(HWND window, WPARAM wParam, LPARAM lParam);
