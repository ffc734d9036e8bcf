#pragma once
// When the pointer rests on a city for half a second, the map offers the photos of the city.

#include <optional>

#include "base/window_timer_win.h"
#include "window/pointer_state.h"

inline constexpr UINT_PTR kHoverTimer = 3;

/// The wait for the pointer to rest on a city.
class Hover {
public:
    /// Starts a wait. Ends an earlier wait.
    /// @param signedIndex  index of the city; negated when the pointer is not on the city: it is
    ///                     then only the city nearest to the pointer
    void Start(HWND window, std::int32_t signedIndex, const WindowPoint& point) noexcept;
    void Cancel() noexcept { timer_.Stop(); }
    /// Cancels the wait if it was started for `window`.
    void CancelFor(HWND window) noexcept;
    /// Cancels the wait if it was started for this city.
    void CancelForCity(std::int32_t signedIndex) noexcept;

    /// Handles the tick of the timer: ends the wait. @return the signed index of the city; empty
    /// when the cursor is no longer at the point of Start
    std::optional<std::int32_t> End(HWND window) noexcept;

    const WindowTimer& Timer() const noexcept { return timer_; }

private:
    std::int32_t signedIndex_ = 0;
    WindowPoint point_;
    WindowTimer timer_;  ///< runs during the wait
};
