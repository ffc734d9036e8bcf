#pragma once
// The window class of the map, and windows of it.

#include <cstdint>

#include "base/windows_types.h"
#include "window/call_results.h"

/// Registers the class. @return HORIVO_OK, or HORIVO_CLASS_FAILED with the error in `results`
std::uint32_t RegisterMapClass(CallResults& results) noexcept;
/// @return whether the class was registered and is not any more
bool UnregisterMapClass() noexcept;

/// The place and the kind of a window to be created. Pixels; `parent` is null for a top-level
/// window.
struct WindowRequest {
    std::int32_t x, y, width, height;
    DWORD style;
    HWND parent;
};

/// Creates a map window.
/// @param results  when the window is refused, its CreateStatus is the OpenGL set-up code, or it is
///                 HORIVO_OK and LastSysError says why
/// @return null when refused
HWND MakeMapWindow(CallResults& results, const WindowRequest& request) noexcept;
