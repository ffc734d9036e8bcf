#include "window/flight_path.h"

#include <cmath>

#include "math/angles.h"

namespace {

constexpr double kStepsForHalfTurn = 150.0;
constexpr double kHalfTurnDeg = 180.0;
constexpr std::int32_t kFewestSteps = 2;

/// Into [0, 360), also for angles that a host's table may hold beyond one turn.
double Normalise(double angle) noexcept {
    const double once = WrapDegrees(angle);
    if (once >= 0.0 && once < kFullTurnDeg) return once;
    return WrapDegrees(std::fmod(angle, kFullTurnDeg));
}

/// The short way round: into [-180, 180] by one turn.
double ShortWay(double difference) noexcept {
    if (difference > kHalfTurnDeg) return difference - kFullTurnDeg;
    return difference < -kHalfTurnDeg ? difference + kFullTurnDeg : difference;
}

}  // namespace

bool FlightPath::Start(const ViewAngles& from, const ViewAngles& to) noexcept {
    const ViewAngles start{Normalise(from.tilt), Normalise(from.spin)};
    const double tiltWay = ShortWay(Normalise(to.tilt) - start.tilt);
    const double spinWay = ShortWay(Normalise(to.spin) - start.spin);
    const double way = std::sqrt(Square(tiltWay) + Square(spinWay));
    if (!std::isfinite(way)) return false;
    current_ = start;
    target_ = {start.tilt + tiltWay, start.spin + spinWay};
    steps_ = static_cast<std::int32_t>(kStepsForHalfTurn * way / kHalfTurnDeg);
    if (steps_ < kFewestSteps) steps_ = kFewestSteps;
    increment_ = {tiltWay / steps_, spinWay / steps_};
    counter_ = 0;
    return true;
}

bool FlightPath::Step() noexcept {
    ++counter_;
    if (counter_ < steps_) {
        current_ = {current_.tilt + increment_.tilt, current_.spin + increment_.spin};
        return true;
    }
    current_ = target_;
    return false;
}

ViewAngles FlightPath::Current() const noexcept {
    return {WrapDegrees(current_.tilt), WrapDegrees(current_.spin)};
}
