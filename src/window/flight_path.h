#pragma once

#include <cstdint>

#include "window/view_control.h"

/// The flight of the globe from one view to another in equal steps.
class FlightPath {
public:
    /// Prepares a flight the short way round. @return false, and nothing is prepared, when an angle
    /// is not finite
    bool Start(const ViewAngles& from, const ViewAngles& to) noexcept;

    /// Takes one step. @return whether the flight goes on; after the last step the view is exactly
    /// the target
    bool Step() noexcept;

    /// The view now, wrapped into [0, 360).
    ViewAngles Current() const noexcept;

private:
    ViewAngles target_;
    ViewAngles current_;
    ViewAngles increment_;
    std::int32_t counter_ = 0;
    std::int32_t steps_ = 0;
};
