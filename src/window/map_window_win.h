#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "base/handles_win.h"
#include "base/window_timer_win.h"

/// A map window has timers of the ids 1 to this.
inline constexpr std::size_t kMapTimers = 4;

/// What one live map window owns. Members in this order: released backwards, the font is
/// deselected before it is deleted and the DC goes last.
struct MapWindow {
    explicit MapWindow(HWND handle) noexcept : window(handle), dc(handle) {}

    HWND window;
    WindowDc dc;  ///< kept for the life of the window (class style CS_OWNDC)
    UniqueFont font;
    std::unique_ptr<SelectedObject> selectedFont;
    WindowTimer sunTimer;
    /// By timer id: the start of the timer whose message was posted back and has not come; 0: none.
    std::array<std::uint32_t, kMapTimers + 1> postedBack = {};
    std::int32_t shownWidth = 0;  ///< of the last frame, pixels; 0 before the first
    std::int32_t shownHeight = 0;
};

/// Client size of a window, pixels. @return false, with both unchanged, while a side is below 1
bool ClientSize(HWND window, std::int32_t& width, std::int32_t& height) noexcept;

/// The live map windows, oldest first. All share one context and one scene.
class LiveWindows {
public:
    /// Makes an entry for `window` and makes it the map window. Throws std::bad_alloc.
    MapWindow& Add(HWND window);
    /// Releases the entry; the map window is then the newest of the others, if any.
    void Remove(HWND window) noexcept;
    /// The entry of `window`, null when it is not live (any more).
    MapWindow* Find(HWND window) noexcept;
    bool IsLive(HWND window) noexcept { return Find(window) != nullptr; }
    /// The window that messages without one go to; null when none lives.
    MapWindow* Current() noexcept;
    /// Asks every window for a new picture.
    void InvalidateAll() const noexcept;
    std::size_t Count() const noexcept { return windows_.size(); }

private:
    std::vector<std::unique_ptr<MapWindow>> windows_;
};
