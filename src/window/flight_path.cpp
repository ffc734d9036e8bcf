#include "window/flight_path.h"

#include <cmath>

#include "math/angles.h"

namespace {

constexpr double kStepsForHalfTurn = 150.0;  // three seconds at 50 steps a second
constexpr double kHalfTurnDeg = 180.0;
constexpr std::int32_t kMinSteps = 2;

/// Wraps an angle into [0, 360); a host's table may hold angles of more than one turn.
double Normalise(double angle) noexcept {
    const double once = WrapDegrees(angle);
    if (once >= 0.0 && once < kFullTurnDeg) return once;
    return WrapDegrees(std::fmod(angle, kFullTurnDeg));
}

/// Converts the difference of two angles in [0, 360) to the shortest equivalent turn, in [-180,
/// 180].
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
    if (steps_ < kMinSteps) steps_ = kMinSteps;
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
