#pragma once

#include <cstdint>

#include "window/map_state_win.h"

/// How a map window is asked for. Pixels; `parent` may be null for a window of its own.
struct WindowRequest {
    std::int32_t x, y, width, height;
    DWORD style;
    HWND parent;
};

/// Creates a map window. When it is refused, `createStatus` has the OpenGL set-up code, or
/// HORIVO_OK and `lastSysError` says why. @return null when refused
HWND MakeMapWindow(MapState& map, const WindowRequest& request) noexcept;
