#pragma once

#include <cstdint>

#include "window/view_state.h"

/// The flight of the globe from one view to another in equal steps.
class FlightPath {
public:
    /// Prepares a flight. Tilt and spin each turn the short way round.
    /// @return false when an angle is not finite; the path is then unchanged
    bool Start(const ViewAngles& from, const ViewAngles& to) noexcept;

    /// Moves the view one step. The last step sets the view to exactly the target.
    /// @return whether the flight has more steps
    bool Step() noexcept;

    /// The view after the last step, or the start of the flight. Its angles are in [0, 360).
    ViewAngles Current() const noexcept;

private:
    ViewAngles target_;
    ViewAngles current_;
    ViewAngles increment_;
    std::int32_t counter_ = 0;
    std::int32_t steps_ = 0;
};
