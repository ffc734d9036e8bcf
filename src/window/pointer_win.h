#pragma once
// The mouse on the globe: pointing, dragging, clicking, the wheel.

#include "base/windows_types.h"

LRESULT OnMouseMove(HWND window, WPARAM wParam, LPARAM lParam);
LRESULT OnButtonDown(HWND window, WPARAM wParam, LPARAM lParam);
LRESULT OnButtonUp(HWND window, WPARAM wParam, LPARAM lParam);
LRESULT OnMouseWheel(HWND window, WPARAM wParam, LPARAM lParam);
LRESULT OnMouseLeave(HWND window, WPARAM wParam, LPARAM lParam);
