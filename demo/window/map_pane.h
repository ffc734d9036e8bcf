#pragma once
// The map in its place inside a host window.

#include <cstdint>

#include "windows_api.h"

/// A map in a host window. On Windows the map is the child window that CreateMapWindow returns, and
/// FollowHost and RaiseAboveHost do nothing.
///
/// Under Wine up to version 8, an OpenGL child window stays black, because the device context of a
/// child has no drawable. So under Wine this class makes the map a popup without a border. The host
/// window owns the popup, and the popup covers the place of the map in the host. The popup looks
/// like a child and sends its messages to the host, because GetParent returns the owner of a popup.
class MapPane {
public:
    /// Creates the map in `area`, client pixels of `host`.
    /// @param status  out: the library's code when the map was refused
    /// @return false when there is no map window
    bool Create(HWND host, const RECT& area, std::uint32_t& status);

    /// The map's window; null before Create and after the window was destroyed.
    HWND Window() const { return IsWindow(map_) ? map_ : nullptr; }
    /// Moves the map into `area`, client pixels of the host.
    void Place(const RECT& area);
    /// Under Wine: moves, shows or hides the popup with the map like its host. Call this function
    /// after each change of the host's place.
    void FollowHost();
    /// Under Wine: raises the popup with the map over its host again. Call this function when the
    /// host has become the active window, or one of its children has got the focus: without a
    /// window manager, Wine then raises the host over the popup.
    void RaiseAboveHost();
    /// Puts the host and its map above all other windows, or makes both normal windows again.
    void SetHostOnTop(bool onTop);

private:
    void SetOwner(HWND owner);

    HWND host_ = nullptr;
    HWND map_ = nullptr;
    RECT area_{};
    bool isPopup_ = false;  ///< whether the map is a popup over the host (Wine), not its child
};
