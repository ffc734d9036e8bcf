#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "window/map_window_win.h"

/// The live map windows, oldest first. All share one context and one scene.
class LiveWindows {
public:
    /// Adds an entry for `window`, which becomes the current window. Throws std::bad_alloc.
    MapWindow& Add(HWND window);
    /// Releases the entry of `window`. The newest of the other windows, if any, becomes the current
    /// window.
    void Remove(HWND window) noexcept;
    /// The entry of `window`; null when the window is not live.
    MapWindow* Find(HWND window) noexcept;
    bool IsLive(HWND window) noexcept { return Find(window) != nullptr; }
    /// The newest live window, for work that any window can do. Null when there is none.
    MapWindow* Current() noexcept;
    /// Asks every window to paint a new frame.
    void InvalidateAll() const noexcept;
    std::size_t Count() const noexcept { return windows_.size(); }

private:
    std::vector<std::unique_ptr<MapWindow>> windows_;
};
