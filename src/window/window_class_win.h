#pragma once
// The window class of the map, and windows of it.

#include <cstdint>

#include "window/map_state_win.h"

/// Registers the class. @return HORIVO_OK, or HORIVO_CLASS_FAILED with `lastSysError`
std::uint32_t RegisterMapClass(HostData& host) noexcept;
/// @return whether the class was registered and is so no longer
bool UnregisterMapClass() noexcept;

/// How a map window is asked for. Pixels; `parent` may be null for a window of its own.
struct WindowRequest {
    std::int32_t x, y, width, height;
    DWORD style;
    HWND parent;
};

/// Creates a map window. When it is refused, `createStatus` has the OpenGL set-up code, or
/// HORIVO_OK and `lastSysError` says why. @return null when refused
HWND MakeMapWindow(HostData& host, const WindowRequest& request) noexcept;
