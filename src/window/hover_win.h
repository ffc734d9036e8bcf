#pragma once
// The pointer rests on a city: after half a second the photos of the city are offered.

#include <optional>

#include "base/window_timer_win.h"
#include "window/pointer_state.h"

inline constexpr UINT_PTR kHoverTimer = 3;

/// The wait for the pointer to rest on a city.
class Hover {
public:
    /// Begins to wait; replaces a wait under way.
    /// @param signedIndex  of the city; negative when the city is only the nearest one
    void Start(HWND window, std::int32_t signedIndex, const WindowPoint& point) noexcept;
    void Cancel() noexcept { timer_.Stop(); }
    /// Cancels a wait that was started for `window`.
    void CancelFor(HWND window) noexcept;
    /// Cancels a wait for this city.
    void CancelForCity(std::int32_t signedIndex) noexcept;

    /// Ends the wait (its timer ticked). @return the signed index of the city; empty when the
    /// cursor is not at the point any more
    std::optional<std::int32_t> End(HWND window) noexcept;

    const WindowTimer& Timer() const noexcept { return timer_; }

private:
    std::int32_t signedIndex_ = 0;
    WindowPoint point_;
    WindowTimer timer_;  ///< runs during the wait
};
