#pragma once
// The window class of the map, and the creation of windows of this class.

#include <cstdint>

#include "base/windows_types.h"
#include "window/call_results.h"

/// Registers the class. @return HORIVO_OK, or HORIVO_CLASS_FAILED with the error in `results`
std::uint32_t RegisterMapClass(CallResults& results) noexcept;
/// Unregisters the class. @return false when the class was not registered or is still in use
bool UnregisterMapClass() noexcept;

/// Position, size, style and parent of a window to be created. Pixels in the client area of
/// `parent`. For a top-level window `parent` is null, and the position is that on the screen.
struct WindowRequest {
    std::int32_t x, y, width, height;
    DWORD style;
    HWND parent;
};

/// Creates a map window.
/// @param results  out: when the window is refused, CreateStatus is an OpenGL set-up code of
///                 horivo_map.h, or it is HORIVO_OK and LastSysError returns the reason
/// @return null when the window is refused
HWND MakeMapWindow(CallResults& results, const WindowRequest& request) noexcept;
