#pragma once
// The map inside a host window.

#include <cstdint>

#include "window/host_windows.h"

/// One map view. On Windows it is what CreateMapWindow makes, a child of the host window.
///
/// Wine, up to version 8, gives a child window's DC no drawable, so that an OpenGL child stays
/// black. There the map becomes a borderless window that the host owns and that lies exactly over
/// its place: it looks the same, and since GetParent names the owner of a popup, its messages
/// still go to the host.
class MapPane {
public:
    /// Makes the map over `area`, client pixels of `host`.
    /// @param status  out: the library's code when the map was refused
    bool Create(HWND host, const RECT& area, std::uint32_t& status);

    /// The map's window; null when there is none (any more).
    HWND Window() const { return IsWindow(map_) ? map_ : nullptr; }
    /// Gives the map another place inside the host.
    void Place(const RECT& area);
    /// To be called when the host has moved, been shown or hidden.
    void Follow();
    /// To be called when the host has become the active window: that puts it over what floats.
    void ComeToTop();

private:
    HWND host_ = nullptr;
    HWND map_ = nullptr;
    RECT area_{};
    bool floats_ = false;  ///< over the host instead of in it
};
