#pragma once

#include <cstdint>

#include "base/windows_types.h"

/// A timer of a window: WM_TIMER until it is stopped, at the latest with the object's end.
class WindowTimer {
public:
    WindowTimer() = default;
    WindowTimer(const WindowTimer&) = delete;
    WindowTimer& operator=(const WindowTimer&) = delete;
    ~WindowTimer() { Stop(); }

    /// Replaces what runs. Without a free timer in the system nothing runs then.
    /// @param id  not 0, the window's own for this purpose
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
    /// How often it was started; tells a message of an earlier start from one of this.
    std::uint32_t Starts() const noexcept { return starts_; }

private:
    HWND window_ = nullptr;
    UINT_PTR id_ = 0;
    std::uint32_t starts_ = 0;
};
