#pragma once

#include "base/window_timer_win.h"
#include "window/flight_path.h"

inline constexpr UINT_PTR kFlightTimer = 2;

/// The flight of the globe to another view, one step for each tick of its timer.
class Flight {
public:
    /// Flies from one view to another; replaces a flight under way. An angle that is not finite
    /// only stops the flight under way.
    void Start(HWND window, const ViewAngles& from, const ViewAngles& to) noexcept;
    void Stop() noexcept { timer_.Stop(); }
    /// Stops a flight that was started for `window`.
    void StopFor(HWND window) noexcept;
    bool IsUnderWay() const noexcept { return timer_.Runs(); }

    /// Takes one step, and stops after the last one. @return whether the flight has more steps
    bool Step() noexcept;
    /// The view after the last step.
    ViewAngles Current() const noexcept { return path_.Current(); }

    const WindowTimer& Timer() const noexcept { return timer_; }

private:
    FlightPath path_;
    WindowTimer timer_;  ///< runs as long as the flight
};

/// The view that centres a place, degrees.
ViewAngles ViewOfPlace(double latitudeDeg, double longitudeDeg) noexcept;
