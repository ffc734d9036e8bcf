#pragma once

#include "base/windows_types.h"

LRESULT CALLBACK MapWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
