#pragma once

#include <cstdint>

#include "base/windows_types.h"

/// A timer that sends WM_TIMER to a window until the timer is stopped. The destructor stops it.
class WindowTimer {
public:
    WindowTimer() = default;
    WindowTimer(const WindowTimer&) = delete;
    WindowTimer& operator=(const WindowTimer&) = delete;
    ~WindowTimer() { Stop(); }

    /// Starts the timer; when the timer is running, stops it first. When Windows cannot create a
    /// timer, this object stays stopped.
    /// @param id  not 0; must be unique among the timers of the window
    void Start(HWND window, UINT_PTR id, UINT periodMs) noexcept {
        Stop();
        if (SetTimer(window, id, periodMs, nullptr) == 0) return;
        window_ = window;
        id_ = id;
        ++starts_;
    }
    void Stop() noexcept {
        if (Runs()) KillTimer(window_, id_);
        window_ = nullptr;
        id_ = 0;
    }
    bool Runs() const noexcept { return id_ != 0; }
    bool RunsFor(HWND window) const noexcept { return Runs() && window_ == window; }
    /// How often Start has succeeded. A caller that stored this number at a start can recognise a
    /// WM_TIMER of an earlier start: the number is then another one.
    std::uint32_t Starts() const noexcept { return starts_; }

private:
    HWND window_ = nullptr;
    UINT_PTR id_ = 0;
    std::uint32_t starts_ = 0;
};
