#pragma once

#include "base/windows_types.h"

/// Paints one frame of a map window (WM_PAINT).
void PaintFrame(HWND window);
