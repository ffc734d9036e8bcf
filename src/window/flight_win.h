#pragma once

#include "base/window_timer_win.h"
#include "window/flight_path.h"

inline constexpr UINT_PTR kFlightTimer = 2;

/// The flight of the globe to another view, one step for each tick of its timer.
class Flight {
public:
    /// Stops a flight under way and starts a flight from one view to another. Starts no flight when
    /// an angle is not finite.
    void Start(HWND window, const ViewAngles& from, const ViewAngles& to) noexcept;
    void Stop() noexcept { timer_.Stop(); }
    /// Stops the flight if it was started for `window`.
    void StopFor(HWND window) noexcept;
    bool IsUnderWay() const noexcept { return timer_.Runs(); }

    /// Moves the view one step and stops the timer after the last step. @return whether the flight
    /// has more steps
    bool Step() noexcept;
    /// The view after the last step.
    ViewAngles Current() const noexcept { return path_.Current(); }

    const WindowTimer& Timer() const noexcept { return timer_; }

private:
    FlightPath path_;
    WindowTimer timer_;  ///< runs while the flight is under way
};

/// The view that shows a place at the centre of the window.
ViewAngles ViewOfPlace(double latitudeDeg, double longitudeDeg) noexcept;
