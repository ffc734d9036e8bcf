#pragma once

#include "base/window_timer_win.h"
#include "window/pointer_state.h"

inline constexpr UINT_PTR kRepeatTimer = 1;

/// Each button that is drawn over the map has the effect of a key. While the left mouse button is
/// held on such a button, this class sends the WM_KEYDOWN of that key again and again.
class ButtonRepeat {
public:
    void Start(HWND window) noexcept;
    void Stop() noexcept { timer_.Stop(); }
    /// Stops the repeat if it was started for `window`.
    void StopFor(HWND window) noexcept;
    bool IsUnderWay() const noexcept { return timer_.Runs(); }

    /// Stops the repeat and forgets the press when `window` does not have the mouse capture. A
    /// message box or a switch to another program ends the capture, and the window then gets no
    /// WM_LBUTTONUP.
    void CancelLostPress(PointerState& pointer, HWND window) noexcept;

    /// Handles a tick of the timer: sends the key of the held button to the window again.
    void Repeat(PointerState& pointer, HWND window);

    const WindowTimer& Timer() const noexcept { return timer_; }

private:
    WindowTimer timer_;
};
